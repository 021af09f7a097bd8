#include <QDir>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

// Runs the built gallery as a person does from a shell.
class GalleryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void takesAPictureOfEverything_data();
    void takesAPictureOfEverything();
    void takesPicturesOfOnePage();
    void speaksTheLanguage();
    void refusesWhatItDoesNotUnderstand_data();
    void refusesWhatItDoesNotUnderstand();
    void saysWhatItCannotDo();
    void explainsItself();

private:
    struct Outcome
    {
        int exitCode;
        QString output;
        QString errors;
    };
    Outcome run(const QStringList &arguments, const QProcessEnvironment &environment);
    Outcome run(const QStringList &arguments) { return run(arguments, m_environment); }
    QImage picture(const QString &language, const QString &folder);

    QTemporaryDir m_scratch;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

namespace {

QSet<QRgb> coloursOf(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours;
}

// The part of a window to the right of the list of pages.
QImage pageOf(const QImage &window)
{
    return window.copy(window.rect().adjusted(window.width() / 4, 0, 0, 0));
}

} // namespace

void GalleryTest::initTestCase()
{
    QVERIFY(m_scratch.isValid());
    QDir(m_scratch.path()).mkdir("runtime");
    const QString runtime = m_scratch.filePath("runtime");
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert("XDG_RUNTIME_DIR", runtime);
}

GalleryTest::Outcome GalleryTest::run(const QStringList &arguments,
                                      const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KOVAKIT_GALLERY), arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, QString(), process.errorString()};

    // The offscreen platform says what it cannot do; that is no fault of the gallery.
    QStringList errors;
    for (const QString &line :
         QString::fromLocal8Bit(process.readAllStandardError()).split(QLatin1Char('\n'))) {
        if (!line.isEmpty() && !line.startsWith("This plugin does not support"))
            errors.append(line);
    }
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            errors.join(QLatin1Char('\n'))};
}

void GalleryTest::takesAPictureOfEverything_data()
{
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QSize>("size");
    QTest::newRow("1") << "1" << QSize(960, 680);
    QTest::newRow("1.5") << "1.5" << QSize(1440, 1020);
}

void GalleryTest::takesAPictureOfEverything()
{
    QFETCH(QString, scale);
    QFETCH(QSize, size);
    const QDir folder(m_scratch.filePath("new/pictures-" + scale));

    // What the desktop has chosen must not get in the way of what was asked for.
    QProcessEnvironment environment = m_environment;
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert("QT_FONT_DPI", "120");
    const Outcome outcome = run({"--scale", scale, "--screenshots", folder.path()}, environment);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);

    QStringList expected = {"buttons.png",           "checks.png",        "icon-buttons.png",
                            "icon-buttons-menu.png", "message-boxes.png", "sheets.png"};
    for (const char *sheet :
         {"animation", "closeable", "custom-buttons", "information", "informative", "long-text",
          "processing", "question", "upgrade", "warning", "warning-question"})
        expected.append(QString("sheets-%1.png").arg(QLatin1String(sheet)));
    for (const char *function :
         {"confirm", "custom-confirm", "info", "informative-warning", "upgrading", "warning"}) {
        const QString name = QString("message-boxes-%1").arg(QLatin1String(function));
        expected.append(name + ".png");
        expected.append(name + "-alone.png");
    }
    const QStringList found = folder.entryList(QDir::Files);
    for (const QString &name : qAsConst(expected))
        QVERIFY2(found.contains(name), qPrintable(name));

    QHash<QByteArray, QString> seen;
    for (const QString &name : found) {
        const QImage image(folder.filePath(name));
        QVERIFY2(image.size() == size, qPrintable(name));
        QVERIFY2(coloursOf(pageOf(image)).size() > 30, qPrintable(name + " is blank"));
        // Whatever should have opened would be missing in a picture that equals another one.
        const QByteArray bits(reinterpret_cast<const char *>(image.constBits()),
                              int(image.sizeInBytes()));
        const QByteArray key = QCryptographicHash::hash(bits, QCryptographicHash::Sha1);
        QVERIFY2(!seen.contains(key), qPrintable(name + " equals " + seen.value(key)));
        seen.insert(key, name);
    }
}

void GalleryTest::takesPicturesOfOnePage()
{
    const QDir folder(m_scratch.filePath("one-page"));
    const Outcome outcome = run({"--page", "icon-buttons", "--screenshots", folder.path()});
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.output.contains(folder.path()));
    QCOMPARE(folder.entryList(QDir::Files),
             QStringList({"icon-buttons-menu.png", "icon-buttons.png"}));
}

QImage GalleryTest::picture(const QString &language, const QString &folder)
{
    const QString path = m_scratch.filePath(folder);
    const Outcome outcome = run({"--lang", language, "--page", "buttons", "--screenshots", path});
    return outcome.exitCode == 0 ? pageOf(QImage(path + "/buttons.png")) : QImage();
}

void GalleryTest::speaksTheLanguage()
{
    const QImage english = picture("enu", "english");
    const QImage german = picture("deu", "german");
    const QImage nonsense = picture("../deu", "nonsense");
    QVERIFY(!english.isNull());
    QVERIFY(!german.isNull());
    QVERIFY(german != english);
    QCOMPARE(nonsense, english);

    const Outcome outcome =
        run({"--lang", "xyz", "--page", "buttons", "--screenshots", m_scratch.filePath("unknown")});
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.errors.contains("\"xyz\"") && outcome.errors.contains("English"),
             qPrintable(outcome.errors));
}

void GalleryTest::refusesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    const auto add = [](const char *name, const QStringList &arguments, const char *named) {
        QTest::newRow(name) << arguments << QString::fromLatin1(named);
    };
    add("unknown option", {"--loud"}, "loud");
    add("stray argument", {"buttons"}, "buttons");
    add("scale missing", {"--scale"}, "--scale");
    add("scale not a number", {"--scale", "big"}, "\"big\"");
    add("scale of nothing", {"--scale", "0"}, "\"0\"");
    add("scale not finite", {"--scale", "nan"}, "\"nan\"");
    add("scale too large", {"--scale", "40"}, "\"40\"");
    add("unknown page", {"--page", "nowhere"}, "\"nowhere\"");
    add("no folder for pictures", {"--screenshots", QString()}, "--screenshots");
    add("theme that is not there", {"--theme", "/no/such/folder"}, "/no/such/folder");
    add("theme that is none", {"--theme", QDir::rootPath()}, "images.json");
}

void GalleryTest::refusesWhatItDoesNotUnderstand()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.startsWith("kovakit-gallery: "), qPrintable(outcome.errors));
    QVERIFY2(outcome.errors.contains(named), qPrintable(outcome.errors));
    QCOMPARE(outcome.output, QString());
}

void GalleryTest::saysWhatItCannotDo()
{
    QFile file(m_scratch.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QString impossible = file.fileName() + "/pictures";
    const Outcome unwritable = run({"--screenshots", impossible});
    QCOMPARE(unwritable.exitCode, 1);
    QVERIFY2(unwritable.errors.contains(impossible), qPrintable(unwritable.errors));

    QProcessEnvironment bare = m_environment;
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        bare.remove(QString::fromLatin1(name));
    const Outcome blind = run({}, bare);
    QCOMPARE(blind.exitCode, 1);
    QVERIFY2(blind.errors.contains("display"), qPrintable(blind.errors));
}

void GalleryTest::explainsItself()
{
    const Outcome outcome = run({"--help"});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QString());
    for (const char *word :
         {"--scale", "--lang", "--theme", "--page", "--screenshots", "sheets", "deu"})
        QVERIFY2(outcome.output.contains(QLatin1String(word)), word);
}

QTEST_GUILESS_MAIN(GalleryTest)
#include "gallery-test.moc"
