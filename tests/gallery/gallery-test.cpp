// SPDX-License-Identifier: MIT

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

namespace {

int colourCount(const QImage &image)
{
    QSet<QRgb> colours;
    for (int i = 0; i < image.width() * image.height(); ++i)
        colours.insert(image.pixel(i % image.width(), i / image.width()));
    return colours.size();
}

// The part of a window to the right of the list of pages.
QImage pageOf(const QImage &window)
{
    return window.copy(window.rect().adjusted(window.width() / 4, 0, 0, 0));
}

} // namespace

// Runs the built gallery as a person does from a shell.
class GalleryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void takesAPictureOfEverything_data();
    void takesAPictureOfEverything();
    void speaksTheLanguage();
    void takesTheOptionsOfQt();
    void saysWhatIsWrong();

private:
    struct Outcome
    {
        int exitCode;
        QString output;
        QString errors;
    };
    Outcome run(const QStringList &arguments, const QProcessEnvironment &environment);
    Outcome run(const QStringList &arguments) { return run(arguments, m_environment); }

    QTemporaryDir m_scratch;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

void GalleryTest::initTestCase()
{
    const QString runtime = m_scratch.filePath("runtime");
    QVERIFY(QDir().mkdir(runtime));
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert("XDG_RUNTIME_DIR", runtime);
}

GalleryTest::Outcome GalleryTest::run(const QStringList &arguments,
                                      const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(KOVAKIT_GALLERY, arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, QString(), process.errorString()};

    // The offscreen platform says what it cannot do; that is no fault of the gallery.
    QString errors = QString::fromLocal8Bit(process.readAllStandardError());
    errors.remove(QRegularExpression("This plugin does not support[^\n]*\n"));
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()), errors};
}

void GalleryTest::takesAPictureOfEverything_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("1") << QSize(960, 680);
    QTest::newRow("1.5") << QSize(1440, 1020);
}

void GalleryTest::takesAPictureOfEverything()
{
    QFETCH(QSize, size);
    const QString scale = QTest::currentDataTag();
    const QDir folder(m_scratch.filePath("new/pictures-" + scale));

    // What the desktop has chosen must not get in the way of what was asked for.
    QProcessEnvironment environment = m_environment;
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert("QT_FONT_DPI", "120");
    const Outcome outcome = run({"--scale", scale, "--screenshots", folder.path()}, environment);
    QCOMPARE(outcome.errors, "");
    QCOMPARE(outcome.exitCode, 0);

    const QStringList found = folder.entryList(QDir::Files);
    for (const char *name :
         {"buttons", "checks", "icon-buttons-menu", "message-boxes-confirm",
          "message-boxes-warning-alone", "sheets", "sheets-animation", "sheets-question"})
        QVERIFY2(found.contains(QString(name) + ".png"), name);
    QMap<QByteArray, QString> seen;
    for (const QString &name : found) {
        const QImage image(folder.filePath(name));
        QCOMPARE(image.size(), size);
        QVERIFY2(colourCount(pageOf(image)) > 30, qPrintable(name + " is blank"));
        // Whatever should have opened would be missing in a picture that equals another one.
        const QByteArray key(reinterpret_cast<const char *>(image.constBits()),
                             int(image.sizeInBytes()));
        QVERIFY2(!seen.contains(key), qPrintable(name + " equals " + seen.value(key)));
        seen.insert(key, name);
    }
}

void GalleryTest::speaksTheLanguage()
{
    QMap<QString, QImage> pages;
    QMap<QString, QString> errors;
    for (const QString language : {"enu", "deu", "../deu"}) {
        const QDir folder(m_scratch.filePath("page-" + QString(language).remove('/')));
        const Outcome outcome =
            run({"--lang", language, "--page", "buttons", "--screenshots", folder.path()});
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(outcome.output.contains(folder.path()));
        QCOMPARE(folder.entryList(QDir::Files), QStringList("buttons.png"));
        pages.insert(language, pageOf(QImage(folder.filePath("buttons.png"))));
        errors.insert(language, outcome.errors);
    }
    QVERIFY(pages.value("deu") != pages.value("enu"));
    QCOMPARE(errors.value("deu"), "");
    QCOMPARE(pages.value("../deu"), pages.value("enu"));
    QVERIFY(errors.value("../deu").contains("English"));
}

void GalleryTest::takesTheOptionsOfQt()
{
    QProcessEnvironment bare = m_environment;
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        bare.remove(name);
    const QDir folder(m_scratch.filePath("reverse"));
    const Outcome outcome = run({"-platform", "offscreen", "--page", "buttons", "-style=fusion",
                                 "-reverse", "--screenshots", folder.path(), "--style", "windows"},
                                bare);
    QCOMPARE(outcome.errors, "");
    QCOMPARE(outcome.exitCode, 0);
    const QImage picture(folder.filePath("buttons.png"));
    const int middle = picture.height() / 2;
    const QColor navigation(0xF4, 0xF7, 0xFA);
    QCOMPARE(picture.pixelColor(picture.width() - 4, middle), navigation);
    QVERIFY(picture.pixelColor(4, middle) != navigation);

    // With a platform there is something to open a window on; this one cannot be loaded.
    const Outcome unknown = run({"-platform", "no-such-platform"}, bare);
    QVERIFY2(!unknown.errors.contains("DISPLAY is not set"), qPrintable(unknown.errors));
    const Outcome blind = run({}, bare);
    QCOMPARE(blind.exitCode, 1);
    QVERIFY2(blind.errors.contains("display"), qPrintable(blind.errors));
}

void GalleryTest::saysWhatIsWrong()
{
    QFile file(m_scratch.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const struct
    {
        QStringList arguments;
        int exitCode;
        QString named;
    } cases[] = {
        {{"--loud"}, 2, "loud"},
        {{"buttons"}, 2, "buttons"},
        {{"--scale"}, 2, "--scale"},
        {{"--scale", "big"}, 2, "\"big\""},
        {{"--scale", "0"}, 2, "\"0\""},
        {{"--scale", "nan"}, 2, "\"nan\""},
        {{"--scale", "40"}, 2, "\"40\""},
        {{"--page", "nowhere"}, 2, "\"nowhere\""},
        {{"-reverse", "--loud"}, 2, "loud"},
        {{"--screenshots", ""}, 2, "--screenshots"},
        {{"--theme", "/no/such/folder"}, 2, "/no/such/folder"},
        {{"--theme", "/"}, 2, "images.json"},
        {{"--screenshots", file.fileName() + "/pictures"}, 1, file.fileName() + "/pictures"},
    };
    for (const auto &each : cases) {
        const Outcome outcome = run(each.arguments);
        QVERIFY2(outcome.exitCode == each.exitCode, qPrintable(each.arguments.join(' ')));
        QVERIFY2(outcome.errors.startsWith("kovakit-gallery: "), qPrintable(outcome.errors));
        QVERIFY2(outcome.errors.contains(each.named), qPrintable(outcome.errors));
        QCOMPARE(outcome.output, "");
    }
}

QTEST_GUILESS_MAIN(GalleryTest)
#include "gallery-test.moc"
