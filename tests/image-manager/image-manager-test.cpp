#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/ui-path-manager.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

#include <sys/stat.h>

namespace {

QByteArray png(const QSize &size, Qt::GlobalColor color = Qt::red)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

// A picture of a few bytes that says it is @p side pixels wide and high.
QByteArray hugePng(quint32 side)
{
    QByteArray bytes = png({8, 8});
    const auto put = [&bytes](int at, quint32 value) {
        for (int i = 0; i < 4; ++i)
            bytes[at + i] = char(value >> (24 - 8 * i));
    };
    put(16, side);
    put(20, side);
    quint32 crc = 0xffffffff;
    for (int i = 12; i < 29; ++i) {
        crc ^= quint8(bytes.at(i));
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? 0xedb88320 ^ (crc >> 1) : crc >> 1;
    }
    put(29, ~crc);
    return bytes;
}

void writeImage(const QString &name, const QByteArray &content)
{
    writeScratchFile(QString("images/%1.png").arg(name), content);
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

int displaySide(int artSide)
{
    return qRound(qRound(artSide * 0.25) * DPIinfo::getInstance()->getDPI());
}

qint64 tempSize(const QString &name)
{
    const QFileInfo file(ImageManager::getInstance()->getTempImageFullPath(name));
    return file.exists() ? file.size() : -1;
}

} // namespace

class ImageManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void endsTheProcessBeforeInitialize();
    void scalesForTheDisplay();
    void fallsBackToTheDefaultState();
    void warnsOfUnknownNames();
    void loadsNothingForOtherTypes();
    void laterDuplicatesReset();
    void writesTempImages();
    void staysInTheTempFolder();
    void survivesBadDescriptions_data();
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
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("KOVAKIT_TEST_ABORT", "1");
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    QVERIFY(child.readAllStandardError().contains("ImageManager is not initialized")
            || child.readAllStandardOutput().contains("ImageManager is not initialized"));
}

void ImageManagerTest::scalesForTheDisplay()
{
    const double ratio = DPIinfo::getInstance()->getDPR();
    writeImage("square", png({64, 64}));
    writeImage("odd", png({50, 50}));
    writeImage("wide", png({128, 32}));
    for (const auto type : {ImageManager::LazyLoad, ImageManager::PrepareAll}) {
        initialize(R"({"images": ["square", "odd", "wide"], "other": 1})", type);
        const QPixmap square = image("square");
        QCOMPARE(square.width(), qRound(displaySide(64) * ratio));
        QCOMPARE(square.devicePixelRatio(), ratio);
        // 12.5 rounds to 13 before the display scale comes in.
        QCOMPARE(image("odd").width(), qRound(displaySide(50) * ratio));
        QCOMPARE(image("wide").size(), QSize(displaySide(128), displaySide(32)) * ratio);
        QCOMPARE(square.toImage().pixelColor(3, 3), QColor(Qt::red));
    }
}

void ImageManagerTest::fallsBackToTheDefaultState()
{
    writeImage("icon", png({64, 64}, Qt::red));
    writeImage("icon_click", png({64, 64}, Qt::blue));
    initialize(R"({"images": ["icon"]})");
    WarningCatcher warnings;
    QCOMPARE(image("icon", ImageManager::Click).toImage().pixelColor(2, 2), QColor(Qt::blue));
    QCOMPARE(warnings.take(), QStringList());
    for (int time = 0; time < 2; ++time) {
        QCOMPARE(image("icon", ImageManager::Hover).toImage().pixelColor(2, 2), QColor(Qt::red));
        QCOMPARE(warnings.take(),
                 QStringList{"Cannot load pixmap \"icon\" with type 1 [use default icon]"});
    }
}

void ImageManagerTest::warnsOfUnknownNames()
{
    WarningCatcher warnings;
    QVERIFY(image("nobody").isNull());
    QVERIFY(image(nullptr).isNull());
    QCOMPARE(warnings.take(),
             (QStringList{"Cannot load pixmap \"nobody\"", "Cannot load pixmap \"\""}));
}

void ImageManagerTest::loadsNothingForOtherTypes()
{
    writeImage("plain", png({64, 64}));
    initialize(R"({"images": ["plain"]})", ImageManager::InitializeType(2));
    WarningCatcher warnings;
    QVERIFY(image("plain").isNull());
    QCOMPARE(warnings.take(), QStringList());
}

void ImageManagerTest::laterDuplicatesReset()
{
    writeImage("twice", png({64, 64}, Qt::red));
    initialize(R"({"images": ["twice", "twice"]})");
    QCOMPARE(image("twice").toImage().pixelColor(0, 0), QColor(Qt::red));
    // A file that is replaced within the same second must not come out of a cache.
    writeImage("twice", png({64, 64}, Qt::blue));
    initialize(R"({"images": ["twice"]})");
    QCOMPARE(image("twice").toImage().pixelColor(0, 0), QColor(Qt::blue));
    initialize(R"({"images": []})");
    QVERIFY(!image("twice").isNull());
}

void ImageManagerTest::writesTempImages()
{
    writeImage("btclose", png({64, 32}));
    initialize(R"({"tmp_images": ["bt close", "missing"]})");
    const QImage written(ImageManager::getInstance()->getTempImageFullPath("btclose"));
    QCOMPARE(written.size(), QSize(displaySide(64), displaySide(32)));
    QVERIFY(ImageManager::getInstance()->getTempImageFullPath("btclose").endsWith(
        "/deep/user/tmp_images/tmp_btclose.png"));
    QCOMPARE(tempSize("missing"), 0);
}

void ImageManagerTest::staysInTheTempFolder()
{
    const QString victim = writeScratchFile("deep/user/victim.png", "precious");
    writeScratchFile("deep/user/tmp_images/tmp_/file", "");
    writeScratchFile("deep/user/tmp_images/tmp_../file", "");
    const QStringList filesBefore = QDir(scratchFolder() + "/deep/user").entryList(QDir::Files);
    WarningCatcher warnings;
    initialize(R"({"tmp_images": ["/../../victim", "../../victim", "..", ".", "", "a/b",
                                  "/etc/x", "a\\..\\b", 7, "./x"]})");
    QFile file(victim);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
    QCOMPARE(QDir(scratchFolder() + "/deep/user").entryList(QDir::Files), filesBefore);
    QVERIFY(
        warnings.take().contains("Cannot write temp image \"/../../victim\" outside its folder"));
}

void ImageManagerTest::survivesBadDescriptions_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("truncated") << QByteArray(R"({"images": ["new", )");
    QTest::newRow("array") << QByteArray(R"(["new"])");
    QTest::newRow("wrong types") << QByteArray(R"({"images": {"new": 1}, "tmp_images": "new"})");
    QTest::newRow("nul") << QByteArray("{\"images\": [\"new\"\0]}", 21);
    QTest::newRow("binary") << QByteArray::fromHex("ffd8ffe000104a46ff00fe");
    QTest::newRow("deep") << QByteArray(R"({"images": )") + QByteArray(100000, '[');
    QTest::newRow("large") << QByteArray(R"({"images": [")") + QByteArray(100 << 20, 'x');
}

void ImageManagerTest::survivesBadDescriptions()
{
    QFETCH(QByteArray, description);
    writeImage("new", png({64, 64}));
    WarningCatcher warnings;
    initialize(description, ImageManager::PrepareAll);
    QCOMPARE(warnings.take(), QStringList());
    QVERIFY(image("new").isNull());
}

void ImageManagerTest::refusesBadPictures()
{
    writeImage("empty", QByteArray());
    writeImage("truncated", png({64, 64}).left(40));
    QRandomGenerator random(1);
    QByteArray noise;
    for (int i = 0; i < 4096; ++i)
        noise.append(char(random.generate()));
    writeImage("noise", noise);
    writeImage("huge", hugePng(30000));
    QCOMPARE(QImageReader(scratchFolder() + "/images/huge.png").size(), QSize(30000, 30000));
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
    QCOMPARE(tempSize("huge"), 0);
}

QTEST_MAIN(ImageManagerTest)
#include "image-manager-test.moc"
