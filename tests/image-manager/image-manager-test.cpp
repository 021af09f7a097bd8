// SPDX-License-Identifier: MIT

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include "support/pictures.h"
#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

void writeImage(const QString &name, const QByteArray &content)
{
    writeScratchFile("images/" + name + ".png", content);
}

void initialize(const QByteArray &description,
                ImageManager::InitializeType type = ImageManager::LazyLoad)
{
    writeScratchFile("images.json", description);
    ImageManager::getInstance()->initialize(type);
}

QPixmap image(const char *name, ImageManager::ImageType type = ImageManager::Default)
{
    return getGlobalImage(name, type);
}

QColor colorOf(const QPixmap &pixmap)
{
    return pixmap.toImage().pixelColor(2, 2);
}

int displaySide(int artSide)
{
    return qRound(qRound(artSide * 0.25) * DPIinfo::getInstance()->getDPI());
}

QString tempPath(const QString &name)
{
    return ImageManager::getInstance()->getTempImageFullPath(name);
}

} // namespace

// Pictures and icons from a description file: their sizes, states and fall-backs, the copies for
// style sheets, and what becomes of bad files.
class ImageManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void endsTheProcessBeforeInitialize();
    void scalesForTheDisplay();
    void fallsBackToTheDefaultState();
    void laterDuplicatesReset();
    void writesTempImages();
    void replacesTempImagesInOneStep();
    void staysInTheTempFolder();
    void survivesBadDescriptions();
    void refusesBadPictures();
};

void ImageManagerTest::initTestCase()
{
    UIPathManager::getInstance()->setPath("resource_path", scratchFolder());
    UIPathManager::getInstance()->setPath("user_data_path", scratchFolder() + "/deep/user");
    if (qEnvironmentVariableIsSet("KOVAKIT_TEST_ABORT")) {
        // The part of the child process of the first test.
        static_cast<void>(ImageManager::getInstance()->getImageFolder());
    }
}

void ImageManagerTest::endsTheProcessBeforeInitialize()
{
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("KOVAKIT_TEST_ABORT", "1");
    // It cannot clean up after itself.
    environment.insert("TMPDIR", scratchFolder());
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    QVERIFY(child.readAll().contains("ImageManager is not initialized"));
}

void ImageManagerTest::scalesForTheDisplay()
{
    const double ratio = DPIinfo::getInstance()->getDPR();
    writeImage("odd", pngFile({50, 50}));
    writeImage("wide", pngFile({128, 32}));
    for (const auto type : {ImageManager::LazyLoad, ImageManager::PrepareAll}) {
        initialize(R"({"images": ["odd", "wide"], "other": 1})", type);
        QCOMPARE(image("wide").devicePixelRatio(), ratio);
        QCOMPARE(colorOf(image("wide")), QColor(Qt::red));
        // 12.5 rounds to 13 before the display scale comes in.
        QCOMPARE(image("odd").width(), qRound(displaySide(50) * ratio));
        QCOMPARE(image("wide").size(), QSize(displaySide(128), displaySide(32)) * ratio);
        // An icon has the pixels of the sharpest screen as well, to the fraction.
        const QIcon icon = ImageManager::getInstance()->getIcon("wide", ImageManager::Default);
        const QSize sharpest = QSize(displaySide(128), displaySide(32)) * qApp->devicePixelRatio();
        QCOMPARE(icon.actualSize({999, 999}), sharpest);
        QVERIFY(!icon.pixmap(image("wide").size()).isNull());
    }
}

void ImageManagerTest::fallsBackToTheDefaultState()
{
    writeImage("icon", pngFile({64, 64}, Qt::red));
    writeImage("icon_click", pngFile({64, 64}, Qt::blue));
    initialize(R"({"images": ["icon"]})");
    WarningCatcher warnings;
    QCOMPARE(colorOf(image("icon", ImageManager::Click)), QColor(Qt::blue));
    QCOMPARE(warnings.take(), QStringList());
    const QString fallback = "Cannot load pixmap \"icon\" with type %1 [use default icon]";
    for (int time = 0; time < 2; ++time)
        QCOMPARE(colorOf(image("icon", ImageManager::Hover)), QColor(Qt::red));
    ImageManager *images = ImageManager::getInstance();
    const QIcon disabled = images->getIcon("icon", ImageManager::Disable);
    QCOMPARE(colorOf(disabled.pixmap(image("icon").size())), QColor(Qt::red));
    QVERIFY(image(nullptr).isNull());
    QVERIFY(images->getIcon("n", ImageManager::Hover).isNull());
    QCOMPARE(warnings.take(), (QStringList{fallback.arg(1), fallback.arg(1), fallback.arg(3),
                                           "Cannot load pixmap \"\"", "Cannot load pixmap \"n\""}));
}

void ImageManagerTest::laterDuplicatesReset()
{
    writeImage("twice", pngFile({64, 64}, Qt::red));
    initialize(R"({"images": ["twice", "twice"]})");
    QCOMPARE(colorOf(image("twice")), QColor(Qt::red));
    // A file that is replaced within the same second must not come out of a cache.
    writeImage("twice", pngFile({64, 64}, Qt::blue));
    initialize(R"({"images": ["twice"]})");
    QCOMPARE(colorOf(image("twice")), QColor(Qt::blue));
    initialize(R"({"images": []})");
    QVERIFY(!image("twice").isNull());
    initialize(R"({"images": ["twice"]})", ImageManager::InitializeType(2));
    QVERIFY(image("twice").isNull());
}

void ImageManagerTest::writesTempImages()
{
    writeImage("btclose", pngFile({64, 32}));
    initialize(R"({"tmp_images": ["bt close", "missing"]})");
    QVERIFY(tempPath("btclose").endsWith("/deep/user/tmp_images/tmp_btclose.png"));
    QCOMPARE(QImage(tempPath("btclose")).size(), QSize(displaySide(64), displaySide(32)));
    QVERIFY(QFile::exists(tempPath("missing")) && QFileInfo(tempPath("missing")).size() == 0);

    // Icons of style sheets find a sharper copy where there are pixels for it.
    const int ratio = int(std::ceil(qApp->devicePixelRatio()));
    const QString sharper = tempPath(QString("btclose@%1x").arg(ratio));
    QCOMPARE(QImage(sharper).size(),
             ratio == 1 ? QSize(0, 0) : QSize(displaySide(64), displaySide(32)) * ratio);
}

void ImageManagerTest::replacesTempImagesInOneStep()
{
    const QString path = tempPath("mark");
    const QByteArray description = R"({"tmp_images": ["mark"]})";
    writeImage("mark", pngFile({64, 64}));
    initialize(description);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.permissions() & QFile::ReadOther, QFile::Permissions(QFile::ReadOther));
    writeImage("mark", pngFile({128, 128}));
    initialize(description);
    // Who has begun to read the earlier picture reads it to its end.
    QCOMPARE(QImage::fromData(file.readAll()).width(), displaySide(64));
    QCOMPARE(QImage(path).width(), displaySide(128));
    QCOMPARE(QDir(QFileInfo(path).path()).entryList({".part*"}, QDir::Files | QDir::Hidden),
             QStringList());

    // What lies at its place is replaced, not written to and not waited for.
    const QString victim = writeScratchFile("victim", "precious");
    QVERIFY(QFile::remove(path) && QFile::link(victim, path));
    initialize(description);
    QCOMPARE(QFileInfo(victim).size(), 8);
    QVERIFY(QFile::remove(path));
    QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    initialize(description);
    QCOMPARE(QImage(path).width(), displaySide(128));
}

void ImageManagerTest::staysInTheTempFolder()
{
    const QString victim = writeScratchFile("deep/user/victim.png", "precious");
    for (const char *folder : {"tmp_", "tmp_.."})
        writeScratchFile(QString("deep/user/tmp_images/%1/file").arg(folder), "");
    const QDir around(QFileInfo(victim).path());
    const QStringList before = around.entryList(QDir::Files);
    WarningCatcher warnings;
    initialize(R"({"tmp_images": ["/../../victim", "../../victim", "..", ".", "", "a/b",
                                  "/etc/x", "a\\..\\b", 7, "./x"]})");
    QFile file(victim);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
    QCOMPARE(around.entryList(QDir::Files), before);
    QVERIFY(
        warnings.take().contains("Cannot write temp image \"/../../victim\" outside its folder"));
}

void ImageManagerTest::survivesBadDescriptions()
{
    writeImage("new", pngFile({64, 64}));
    WarningCatcher warnings;
    for (const QByteArray &description :
         {QByteArray(), QByteArray(R"({"images": ["new", )"), QByteArray(R"(["new"])"),
          QByteArray(R"({"images": {"new": 1}, "tmp_images": "new"})"),
          QByteArray("{\"images\": [\"new\"\0]}", 21),
          QByteArray::fromHex("ffd8ffe000104a46ff00fe"), R"({"images": )" + QByteArray(100000, '['),
          R"({"images": [")" + QByteArray(100 << 20, 'x')}) {
        initialize(description, ImageManager::PrepareAll);
        QCOMPARE(warnings.take(), QStringList());
        QVERIFY2(image("new").isNull(), description.left(60).constData());
        QCOMPARE(warnings.take().size(), 1);
    }
}

void ImageManagerTest::refusesBadPictures()
{
    writeImage("empty", "");
    writeImage("truncated", pngFile({64, 64}).left(40));
    writeImage("noise", QByteArray("\x89PNG noise").repeated(400));
    QImage huge(8193, 8192, QImage::Format_Mono);
    huge.fill(0);
    QVERIFY(huge.save(scratchFolder() + "/images/huge.png"));
    const QString pipe = scratchFolder() + "/images/pipe.png";
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    QVERIFY(QDir(scratchFolder()).mkpath("images/folder.png"));
    WarningCatcher warnings;
    initialize(R"({"images": ["empty", "truncated", "noise", "huge", "pipe", "folder"],
                   "tmp_images": ["empty", "noise", "huge", "pipe", "folder"]})",
               ImageManager::PrepareAll);
    QCOMPARE(warnings.take(), QStringList());
    for (const char *name : {"empty", "noise", "huge", "pipe", "folder"}) {
        QVERIFY2(image(name).isNull(), name);
        QCOMPARE(warnings.take().size(), 1);
    }
    QCOMPARE(QFileInfo(tempPath("huge")).size(), 0);
}

QTEST_MAIN(ImageManagerTest)
#include "image-manager-test.moc"
