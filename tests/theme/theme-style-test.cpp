// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>
#include <QtWidgets>

#include <cmath>

namespace {

using Declarations = QMap<QString, QString>;

QString styleText(const QString &key)
{
    QString text = getStyleSheet(key, false);
    if (key == "component.combobox")
        text = text.arg(QString("padding-left: %1px;").arg(6 * DPIinfo::getInstance()->getDPI()))
                   .arg("border: 1px solid #C8D2DC;");
    return text;
}

// What the text of @p key says about each selector, with what its element says at rest below it.
QMap<QString, Declarations> rulesOf(const QString &key)
{
    static const QRegularExpression block("([^{}]*)\\{([^{}]*)\\}");
    static const QRegularExpression state("(?<!:):[a-z-]+|\\[[^]]*\\]");
    QMap<QString, Declarations> rules;
    auto match = block.globalMatch(styleText(key));
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        for (const QString &part : found.captured(1).split(',')) {
            const QString selector = part.trimmed();
            Declarations declarations = rules.value(QString(selector).remove(state));
            for (const QString &declaration : found.captured(2).split(';'))
                declarations.insert(declaration.section(':', 0, 0).trimmed(),
                                    declaration.section(':', 1).trimmed());
            rules.insert(selector, declarations);
        }
    }
    return rules;
}

double contrast(const QColor &first, const QColor &second)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
             + 0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

// From the left edge to the text.
double inset(const Declarations &rule)
{
    const auto pixels = [](const QString &text) { return text.section("px", 0, 0).toDouble(); };
    const QStringList padding = rule.value("padding").split(' ');
    const QString left = rule.value("padding-left", padding.value(padding.size() == 4 ? 3 : 1));
    return pixels(rule.value("border")) + pixels(left);
}

// The keys of the theme's style files.
QStringList allKeys()
{
    static const QRegularExpression header("^== (.*) ==$", QRegularExpression::MultilineOption);
    QStringList keys;
    QDirIterator files(themeFolder() + "/styles");
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        auto match = header.globalMatch(QString::fromUtf8(file.readAll()));
        while (match.hasNext())
            keys.append(match.next().captured(1));
    }
    return keys;
}

} // namespace

// The style files of the theme, entry by entry: that Qt reads them, that their pictures exist, and
// that text is legible and the focus seen in every state.
class ThemeStyleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void keepsToTheRulesOfStyleFiles();
    void refersToPicturesThatExist();
    void textIsLegibleInEveryState();
    void focusShowsWithoutMovingTheText();
};

void ThemeStyleTest::keepsToTheRulesOfStyleFiles()
{
    static const QRegularExpression wrong("^\\s*\\{|[\\d.]{4,}px|\\$");
    QVERIFY(allKeys().size() > 30);
    for (const QString &key : allKeys()) {
        QVERIFY2(!getStyleSheet(key, true).contains(wrong), qPrintable(key));
        QWidget widget;
        widget.setStyleSheet(styleText(key));
        widget.grab(); // would log what cannot be read, which fails the test
    }
    QCOMPARE(getStyleSheet("component.combobox", true).count('%'), 2);
}

void ThemeStyleTest::refersToPicturesThatExist()
{
    static const QRegularExpression reference("url\\(\"([^\"]*)\"\\)");
    QSet<QString> used;
    for (const QString &key : allKeys()) {
        const QString text = getStyleSheet(key, true);
        // Without quotes Qt drops the whole text where a folder's name is not plain ASCII.
        QCOMPARE(text.count("url("), text.count("url(\""));
        auto match = reference.globalMatch(text);
        while (match.hasNext()) {
            const QString path = match.next().captured(1);
            QVERIFY2(!QImage(path).isNull(), qPrintable(key + ' ' + path));
            used.insert(QFileInfo(path).fileName());
        }
    }
    const QDir folder(ImageManager::getInstance()->getTempImageFolder());
    for (const QString &written : folder.entryList(QDir::Files))
        QVERIFY2(used.contains(written), qPrintable(written + " is never used"));
}

void ThemeStyleTest::textIsLegibleInEveryState()
{
    int pairs = 0;
    for (const QString &key : allKeys()) {
        const QMap<QString, Declarations> rules = rulesOf(key);
        for (auto rule = rules.begin(); rule != rules.end(); ++rule) {
            // The darker of the two backgrounds on which transparent controls lie.
            QString background = rule->value("background-color", "transparent");
            if (background == "transparent")
                background = "#F4F7FA";
            const double least = rule.key().contains(":disabled") ? 3.0 : 4.5;
            for (const QString &name : rule->keys()) {
                // Properties of widgets too, such as "qproperty-todayColor".
                if (name != "color" && !name.endsWith("Color"))
                    continue;
                const double actual = contrast(QColor(rule->value(name)), QColor(background));
                QVERIFY2(actual >= least,
                         qPrintable(QString("%1 %2: %3").arg(key, rule.key()).arg(actual)));
                ++pairs;
            }
        }
    }
    QVERIFY(pairs > 60);
}

void ThemeStyleTest::focusShowsWithoutMovingTheText()
{
    int controls = 0;
    for (const QString &key : allKeys()) {
        const QMap<QString, Declarations> rules = rulesOf(key);
        const auto borderOf = [&rules](const QString &selector) {
            return rules.value(selector).value("border")
                 + rules.value(selector).value("border-color");
        };
        for (const QString &selector : rules.keys()) {
            // The pictures of tool buttons stay in the middle.
            if (!selector.endsWith(":focus") || selector.contains('[')
                || selector.contains("QToolButton") || borderOf(selector).isEmpty())
                continue;
            const QString element = selector.section(":focus", 0, 0);
            QVERIFY2(borderOf(selector) != borderOf(element + ":hover"), qPrintable(key));
            // The border of the combo box does not grow with the display; its ring does.
            const double shift = inset(rules.value(selector)) - inset(rules.value(element));
            QVERIFY2(std::abs(shift) <= (key == "component.combobox" ? 1 : 0), qPrintable(key));
            ++controls;
        }
    }
    QVERIFY(controls >= 11);
}

QTEST_MAIN(ThemeStyleTest)
#include "theme-style-test.moc"
