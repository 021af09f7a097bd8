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

QStringList complaints;

void noteComplaint(QtMsgType, const QMessageLogContext &, const QString &text)
{
    complaints.append(text);
}

using MakeWidget = std::function<QWidget *()>;

template<typename Widget>
QWidget *make()
{
    auto *widget = new Widget;
    widget->setText("text");
    return widget;
}

template<typename Widget, typename... Arguments>
MakeWidget makeWith(Arguments... arguments)
{
    return [arguments...] { return new Widget(arguments...); };
}

QWidget *makeComboBox()
{
    auto *box = new QComboBox;
    box->addItems({"one", "two"});
    box->view()->setItemDelegate(new QStyledItemDelegate(box));
    return box;
}

QWidget *makeDateBox()
{
    auto *box = new QComboBox;
    (new QCalendarWidget(box))->move(0, 40);
    return box;
}

QWidget *makeMenu()
{
    auto *menu = new QMenu;
    menu->addAction("plain");
    menu->addMenu("sub");
    return menu;
}

QWidget *makeScrollArea()
{
    auto *area = new QScrollArea;
    area->setWidget(new QWidget);
    area->widget()->resize(900, 900);
    return area;
}

QWidget *makePagingFrame()
{
    auto *frame = new QWidget;
    frame->setObjectName("PAGINGBARBORDER");
    return frame;
}

QWidget *makeSheet()
{
    auto *sheet = new KovaSheet(nullptr);
    sheet->setWidget(new QLabel("text"));
    return sheet;
}

QWidget *makeTree()
{
    auto *tree = new QTreeWidget;
    (new QTreeWidgetItem(tree, {"text"}))->setCheckState(0, Qt::Checked);
    return tree;
}

// Every key that the widgets ask for and the theme's own two, each with a widget of the class that
// its text is set on.
const QMap<QString, MakeWidget> &widgetOfKey()
{
    static const QMap<QString, MakeWidget> map = [] {
        const QPair<MakeWidget, QStringList> rows[] = {
            {make<QPushButton>,
             {"apply_button", "button_path_arrow", "button_path_name_button", "cancel_button",
              "default_button", "nonselect_paging_button", "red_button", "select_paging_button"}},
            {make<QToolButton>,
             {"button_path_change_folder_btn", "filter_search_button", "icon_button"}},
            {make<QCheckBox>, {"checkbox"}},
            {make<QRadioButton>, {"radio_button"}},
            {make<QLabel>,
             {"label", "lineedit_label", "message_sheet_informative_text", "message_sheet_text",
              "paging_bar_label", "paging_bar_rightmost_label"}},
            {make<QLineEdit>, {"filter_bar_padding", "lineedit", "tree_item"}},
            {makeWith<QTableWidget>(2, 2), {"button_path", "table"}},
            {makeWith<QHeaderView>(Qt::Horizontal), {"table_header"}},
            {makeComboBox, {"combobox"}},
            {makeDateBox, {"date_selector"}},
            {makeMenu, {"menu"}},
            {makeWith<QMessageBox>(QMessageBox::Question, "title", "text", QMessageBox::Ok),
             {"confirm_message_box", "info_message_box", "upgrading_message_box",
              "warning_message_box"}},
            {makeSheet, {"message_sheet_other", "message_sheet_processing"}},
            {makePagingFrame, {"paging_bar_border"}},
            {makeScrollArea, {"scrollbar"}},
            {makeWith<QProgressBar>(), {"help_busy"}},
        };
        QMap<QString, MakeWidget> keys = {{"theme.tree", makeTree},
                                          {"theme.window", makeWith<QMainWindow>()}};
        for (const auto &[factory, names] : rows) {
            for (const QString &name : names)
                keys.insert("component." + name, factory);
        }
        return keys;
    }();
    return map;
}

} // namespace

class ThemeStyleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void everyKeyIsReadByItsWidget_data();
    void everyKeyIsReadByItsWidget();
    void keepsToTheRulesOfStyleFiles();
    void refersToPicturesThatExist();
    void textIsLegibleInEveryState();
    void focusShowsWithoutMovingTheText();
};

void ThemeStyleTest::everyKeyIsReadByItsWidget_data()
{
    QTest::addColumn<QString>("key");
    for (const QString &key : widgetOfKey().keys())
        QTest::newRow(qPrintable(key)) << key;
}

void ThemeStyleTest::everyKeyIsReadByItsWidget()
{
    QFETCH(QString, key);
    const std::unique_ptr<QWidget> widget(widgetOfKey().value(key)());
    widget->setStyleSheet(QString());

    complaints.clear();
    const QtMessageHandler before = qInstallMessageHandler(noteComplaint);
    const QPixmap plain = widget->grab();
    widget->setStyleSheet(styleText(key));
    const QPixmap styled = widget->grab();
    widget->setEnabled(false);
    widget->grab();
    qInstallMessageHandler(before);

    QCOMPARE(complaints, QStringList());
    QVERIFY2(plain.toImage() != styled.toImage(), "the text selects nothing");
}

void ThemeStyleTest::keepsToTheRulesOfStyleFiles()
{
    static const QRegularExpression longLength("[\\d.]{4,}px");
    for (const QString &key : widgetOfKey().keys()) {
        const QString text = getStyleSheet(key, true);
        QVERIFY2(!longLength.match(text).hasMatch(), qPrintable(key));
        QVERIFY2(!text.trimmed().startsWith('{'), qPrintable(key));
        QVERIFY2(!text.contains('$'), qPrintable(key));
    }
    QCOMPARE(getStyleSheet("component.combobox", true).count('%'), 2);
}

void ThemeStyleTest::refersToPicturesThatExist()
{
    static const QRegularExpression reference("url\\(\"([^\"]*)\"\\)");
    QSet<QString> used;
    for (const QString &key : widgetOfKey().keys()) {
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
    for (const QString &key : widgetOfKey().keys()) {
        const QMap<QString, Declarations> rules = rulesOf(key);
        for (auto rule = rules.begin(); rule != rules.end(); ++rule) {
            const QString color = rule->value("color");
            // The darker of the two backgrounds on which transparent controls lie.
            QString background = rule->value("background-color", "transparent");
            if (background == "transparent")
                background = "#F4F7FA";
            if (color.isEmpty())
                continue;
            const double least = rule.key().contains(":disabled") ? 3.0 : 4.5;
            const double actual = contrast(QColor(color), QColor(background));
            QVERIFY2(actual >= least,
                     qPrintable(QString("%1 %2: %3").arg(key, rule.key()).arg(actual)));
            ++pairs;
        }
    }
    QVERIFY(pairs > 60);
}

void ThemeStyleTest::focusShowsWithoutMovingTheText()
{
    int controls = 0;
    for (const QString &key : widgetOfKey().keys()) {
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
