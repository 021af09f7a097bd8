#include "support/test-host.h"

#include <kovakit-qt/kovakit-qt.h>

#include <QtTest>
#include <QtWidgets>

#include <cmath>

namespace {

QString styleText(const QString &key)
{
    QString text = getStyleSheet(key, false);
    if (key == "component.combobox")
        text = text.arg(QString("padding-left: %1px; \npadding-right: %1px;")
                            .arg(QString::number(6 * DPIinfo::getInstance()->getDPI(), 'g', 6)))
                   .arg("border: 1px solid #C8D2DC;");
    return text;
}

struct Rule
{
    QStringList selectors;
    QMap<QString, QString> declarations;
};

QVector<Rule> rulesOf(const QString &text)
{
    static const QRegularExpression block("([^{}]*)\\{([^{}]*)\\}");
    QVector<Rule> rules;
    auto match = block.globalMatch(text);
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        Rule rule;
        for (const QString &selector : found.captured(1).split(QLatin1Char(',')))
            rule.selectors.append(selector.trimmed());
        for (const QString &declaration : found.captured(2).split(QLatin1Char(';'))) {
            const int colon = declaration.indexOf(QLatin1Char(':'));
            rule.declarations.insert(declaration.left(colon).trimmed(),
                                     declaration.mid(colon + 1).trimmed());
        }
        rules.append(rule);
    }
    return rules;
}

double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
         + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &first, const QColor &second)
{
    const double lighter = std::max(luminance(first), luminance(second));
    const double darker = std::min(luminance(first), luminance(second));
    return (lighter + 0.05) / (darker + 0.05);
}

QStringList complaints;

void noteComplaint(QtMsgType, const QMessageLogContext &, const QString &text)
{
    complaints.append(text);
}

using MakeWidget = std::function<QWidget *()>;

template<typename Widget>
MakeWidget make()
{
    return [] {
        auto *widget = new Widget;
        if constexpr (
            std::is_base_of_v<
                QLabel,
                Widget> || std::is_base_of_v<QLineEdit, Widget> || std::is_base_of_v<QAbstractButton, Widget>)
            widget->setText("text");
        return widget;
    };
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
    auto *calendar = new QCalendarWidget(box);
    calendar->move(0, 40);
    return box;
}

QWidget *makeMenu()
{
    auto *menu = new QMenu;
    menu->addAction("plain");
    QAction *checked = menu->addAction("checked");
    checked->setCheckable(true);
    checked->setChecked(true);
    menu->addSeparator();
    menu->addMenu("sub");
    return menu;
}

QWidget *makeSheet()
{
    auto *sheet = new KovaSheet(nullptr);
    auto *layout = new QVBoxLayout(sheet);
    layout->addWidget(new QLabel("text"));
    layout->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok));
    return sheet;
}

QWidget *makeMessageBox()
{
    return new QMessageBox(QMessageBox::Question, "title", "text",
                           QMessageBox::Ok | QMessageBox::Cancel);
}

QWidget *makeScrollArea()
{
    auto *area = new QScrollArea;
    auto *content = new QWidget;
    content->resize(900, 900);
    area->setWidget(content);
    return area;
}

QWidget *makePagingFrame()
{
    auto *frame = new QWidget;
    frame->setObjectName("PAGINGBARBORDER");
    return frame;
}

QWidget *makeTree()
{
    auto *tree = new QTreeWidget;
    auto *item = new QTreeWidgetItem(tree, {"text"});
    item->setCheckState(0, Qt::Checked);
    new QTreeWidgetItem(item, {"child"});
    return tree;
}

QWidget *makeHeader()
{
    auto *table = new QTableWidget(1, 2);
    table->setSortingEnabled(true);
    return table->horizontalHeader();
}

// Every key that the widgets ask for and the theme's own two, each with the class that its text is
// set on.
const QMap<QString, MakeWidget> &widgetOfKey()
{
    static const QMap<QString, MakeWidget> map = [] {
        QMap<QString, MakeWidget> keys;
        const auto add = [&keys](const MakeWidget &factory,
                                 std::initializer_list<const char *> names) {
            for (const char *name : names)
                keys.insert("component." + QLatin1String(name), factory);
        };
        add(make<QPushButton>(),
            {"apply_button", "button_path_arrow", "button_path_name_button", "cancel_button",
             "default_button", "nonselect_paging_button", "red_button", "select_paging_button"});
        add(make<QToolButton>(),
            {"button_path_change_folder_btn", "filter_search_button", "icon_button"});
        add(make<QCheckBox>(), {"checkbox"});
        add(make<QRadioButton>(), {"radio_button"});
        add(make<QLabel>(),
            {"label", "lineedit_label", "message_sheet_informative_text", "message_sheet_text",
             "paging_bar_label", "paging_bar_rightmost_label"});
        add(make<QLineEdit>(), {"filter_bar_padding", "lineedit", "tree_item"});
        add([] { return new QTableWidget(2, 2); }, {"button_path", "table"});
        add(makeHeader, {"table_header"});
        add(makeComboBox, {"combobox"});
        add(makeDateBox, {"date_selector"});
        add(makeMenu, {"menu"});
        add(makeMessageBox, {"confirm_message_box", "info_message_box", "upgrading_message_box",
                             "warning_message_box"});
        add(makeSheet, {"message_sheet_other", "message_sheet_processing"});
        add(makePagingFrame, {"paging_bar_border"});
        add(makeScrollArea, {"scrollbar"});
        add(make<QProgressBar>(), {"help_busy"});
        keys.insert("theme.tree", makeTree);
        keys.insert("theme.window", make<QMainWindow>());
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
    void focusShowsWithoutMovingTheText_data();
    void focusShowsWithoutMovingTheText();
    void errorLooksDifferent();
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
    QVERIFY(!styleText(key).trimmed().isEmpty());
    QWidget *widget = widgetOfKey().value(key)();
    const std::unique_ptr<QWidget> owner(widget->window());

    complaints.clear();
    const QtMessageHandler before = qInstallMessageHandler(noteComplaint);
    const QPixmap plain = owner->grab();
    widget->setStyleSheet(styleText(key));
    const QPixmap styled = owner->grab();
    widget->setEnabled(false);
    owner->grab();
    qInstallMessageHandler(before);

    QCOMPARE(complaints, QStringList());
    const bool invisible = key.startsWith("component.message_sheet_p");
    QVERIFY2(invisible || plain.toImage() != styled.toImage(), "the text selects nothing");
}

void ThemeStyleTest::keepsToTheRulesOfStyleFiles()
{
    static const QRegularExpression longLength("[\\d.]{4,}px");
    static const QRegularExpression block("\\{[^{}]*\\}");
    for (const QString &key : widgetOfKey().keys()) {
        const QString text = getStyleSheet(key, true);
        QVERIFY2(!longLength.match(text).hasMatch(), qPrintable(key));
        QCOMPARE(text.count(QLatin1Char('{')), text.count(QLatin1Char('}')));
        for (const QString &selector : QString(text).split(block))
            QVERIFY2(!selector.contains(QLatin1Char(';')), qPrintable(key));
        QVERIFY2(!text.trimmed().startsWith(QLatin1Char('{')), qPrintable(key));
        QVERIFY2(!text.contains(QLatin1Char('$')), qPrintable(key));
    }
    const QString comboBox = getStyleSheet("component.combobox", true);
    QCOMPARE(comboBox.count(QLatin1Char('%')), 2);
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
            QVERIFY2(!QImage(path).isNull(), qPrintable(key + QLatin1Char(' ') + path));
            used.insert(QFileInfo(path).fileName());
        }
    }
    const QDir folder(ImageManager::getInstance()->getTempImageFolder());
    for (const QString &written : folder.entryList(QDir::Files))
        QVERIFY2(used.contains(written), qPrintable(written + " is never used"));
}

void ThemeStyleTest::textIsLegibleInEveryState()
{
    // The darker of the two backgrounds on which transparent controls lie.
    const QColor page("#F4F7FA");
    static const QRegularExpression state("(?<!:):[a-z-]+|\\[[^]]*\\]");
    int pairs = 0;
    for (const QString &key : widgetOfKey().keys()) {
        QMap<QString, QString> foregrounds;
        QMap<QString, QString> backgrounds;
        for (const Rule &rule : rulesOf(styleText(key))) {
            for (const QString &selector : rule.selectors) {
                const QString element = QString(selector).remove(state);
                const QString color = rule.declarations.value("color", foregrounds.value(element));
                const QString background =
                    rule.declarations.value("background-color", backgrounds.value(element));
                if (element == selector) {
                    foregrounds.insert(element, color);
                    backgrounds.insert(element, background);
                }
                if (color.isEmpty())
                    continue;
                const bool opaque = !background.isEmpty() && background != "transparent";
                const double least = selector.contains(":disabled") ? 3.0 : 4.5;
                const double actual = contrast(QColor(color), opaque ? QColor(background) : page);
                QVERIFY2(actual >= least,
                         qPrintable(QString("%1 %2: %3").arg(key, selector).arg(actual)));
                ++pairs;
            }
        }
    }
    QVERIFY(pairs > 60);
}

void ThemeStyleTest::focusShowsWithoutMovingTheText_data()
{
    QTest::addColumn<QString>("key");
    for (const char *name :
         {"apply_button", "button_path_name_button", "cancel_button", "checkbox", "combobox",
          "date_selector", "default_button", "icon_button", "lineedit", "nonselect_paging_button",
          "radio_button", "red_button", "select_paging_button"})
        QTest::newRow(name) << "component." + QLatin1String(name);
}

void ThemeStyleTest::focusShowsWithoutMovingTheText()
{
    QFETCH(QString, key);
    const std::unique_ptr<QWidget> widget(widgetOfKey().value(key)());
    widget->setStyleSheet(styleText(key));
    widget->resize(kovaPx(120), kovaPx(28));
    widget->ensurePolished();

    const auto textRect = [&widget](QStyle::State focus) {
        if (qobject_cast<QComboBox *>(widget.get())) {
            QStyleOptionComboBox option;
            option.initFrom(widget.get());
            option.state |= focus;
            return widget->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                   QStyle::SC_ComboBoxEditField, widget.get());
        }
        if (qobject_cast<QLineEdit *>(widget.get())) {
            QStyleOptionFrame option;
            option.initFrom(widget.get());
            option.state |= focus;
            return widget->style()->subElementRect(QStyle::SE_LineEditContents, &option,
                                                   widget.get());
        }
        QStyleOptionButton option;
        option.initFrom(widget.get());
        option.state |= focus;
        return widget->style()->subElementRect(QStyle::SE_PushButtonContents, &option,
                                               widget.get());
    };
    const int shift = textRect(QStyle::State_HasFocus).left() - textRect(QStyle::State_None).left();
    // The combo box comes with a border that does not grow with the display; its ring does.
    const int tolerance = key == "component.combobox" ? 1 : 0;
    QVERIFY2(std::abs(shift) <= tolerance, qPrintable(QString::number(shift)));

    QMap<QString, QString> focus;
    QMap<QString, QString> hover;
    for (const Rule &rule : rulesOf(styleText(key))) {
        for (const QString &selector : rule.selectors) {
            if (selector.endsWith(":focus") && !selector.contains(QLatin1Char('[')))
                focus = rule.declarations;
            else if (selector.endsWith(":hover") && !selector.contains("::"))
                hover = rule.declarations;
        }
    }
    const QString border = focus.value("border", focus.value("border-color"));
    QVERIFY(!border.isEmpty());
    QVERIFY(border != hover.value("border", hover.value("border-color")));
}

void ThemeStyleTest::errorLooksDifferent()
{
    QLineEdit field;
    field.setStyleSheet(getStyleSheet("component.lineedit", false));
    const QImage before = field.grab().toImage();
    field.setProperty("error", true);
    field.style()->polish(&field);
    const QImage during = field.grab().toImage();
    QVERIFY(before != during);
    field.setProperty("error", false);
    field.style()->polish(&field);
    QCOMPARE(field.grab().toImage(), before);
}

QTEST_MAIN(ThemeStyleTest)
#include "theme-style-test.moc"
