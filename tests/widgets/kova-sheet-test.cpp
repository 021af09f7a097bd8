// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString fortyLines = QString("A line of forty<br>").repeated(40);

QWidget *maskOf(const QWidget *content)
{
    return qobject_cast<KovaMask *>(content->parentWidget());
}

// A sheet of one of the two kinds that is up over the window of @p owner, with two buttons.
KovaSheet *showNewSheet(bool asksForText, const QString &text, QWidget *owner)
{
    const auto show = [owner](auto *sheet) -> KovaSheet * {
        KovaMask::createMask(sheet, owner->window(), KovaMask::dimColor);
        sheet->showSheet();
        return sheet;
    };
    return asksForText ? show(new KovaInputSheet(text, owner))
                       : show(new KovaMessageSheet(KovaMessageSheet::Question, text, owner));
}

QRect placeOf(const QWidget *widget)
{
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

// Whether texts and buttons of @p sheet are inside its window and clear of each other.
bool isInOrder(const KovaSheet *sheet)
{
    QRect texts;
    for (const auto *label : sheet->findChildren<MessageLabel *>()) {
        const QRect place = label->geometry();
        if (place.height() < label->heightForWidth(place.width()) || place.intersects(texts))
            return false;
        texts |= place;
    }
    const auto *area = sheet->findChild<QScrollArea *>();
    if (area && area->isVisible()) {
        // What is cut off can be scrolled to.
        const QSize more(area->horizontalScrollBar()->maximum(),
                         area->verticalScrollBar()->maximum());
        if (!QRect(QPoint(), area->viewport()->size() + more).contains(texts))
            return false;
        texts = placeOf(area);
    } else {
        texts.translate(placeOf(sheet).topLeft());
    }
    const int m = kovaPx(22);
    const QRect body = placeOf(sheet).adjusted(m, m, -m, -m);
    if (!sheet->window()->rect().contains(placeOf(sheet)) || !body.contains(texts)
        || texts.height() < sheet->findChild<MessageLabel *>()->fontMetrics().height())
        return false;
    QRect before;
    for (const QAbstractButton *button : sheet->findChild<QDialogButtonBox *>()->buttons()) {
        const QRect place = placeOf(button);
        if (!body.contains(place) || place.top() <= texts.bottom() || place.intersects(before))
            return false;
        before = place;
    }
    return true;
}

QLabel *labelWith(const QWidget &sheet, const char *text)
{
    for (QLabel *label : sheet.findChildren<QLabel *>()) {
        if (label->text().contains(text))
            return label;
    }
    return nullptr;
}

// Of a desktop that puts the accept button last.
class AcceptLastStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_DialogButtonLayout ? int(QDialogButtonBox::GnomeLayout)
                                             : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

// What masks and sheets look like and are made of, and how they share the window with the rest.
class KovaSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { delete m_window; }
    void maskFollowsContentAndWindow();
    void maskMindsItsOwnContentOnly();
    void maskIsDeletedWhenEmpty();
    void sheetPaintsBodyAndShadow();
    void sheetsFitTheirWindow_data();
    void sheetsFitTheirWindow();
    void longTextScrolls_data();
    void longTextScrolls();
    void heapIsKnownFromEveryFormOfNew();
    void labelsAndLayoutsFollow();
    void typesChooseIconAndButtons();
    void textsComeAndGo();
    void widthFollowsTheParent();
    void heightFollowsTheText();
    void changingTheTypeConnectsAgain();
    void focusOfATextIsSeen();
    void movieRunsWhileTheSheetIsShown();

private:
    QWidget *m_window = nullptr;
};

void KovaSheetTest::initTestCase()
{
    QApplication::setStyle(new AcceptLastStyle);
    {
        // A host without pictures.
        WarningCatcher warnings;
        KovaSheet sheet(nullptr);
        sheet.resize(200, 200);
        QCOMPARE(sheet.grab().toImage().pixelColor(100, 100), QColor(Qt::white));
        QCOMPARE(warnings.take().size(), 8);
    }
    setUpHost();
}

void KovaSheetTest::init()
{
    m_window = new QWidget;
    m_window->resize(kovaPx(900), kovaPx(700));
    m_window->show();
}

void KovaSheetTest::maskFollowsContentAndWindow()
{
    auto *content = new QLabel("content");
    content->setFixedSize(100, 50);
    QCOMPARE(KovaMask::createMask(nullptr, m_window, Qt::black), nullptr);
    QCOMPARE(KovaMask::createMask(content, nullptr, Qt::black), nullptr);
    QCOMPARE(KovaMask::createMask(content, m_window, Qt::black), content);
    const QPointer<QWidget> mask = maskOf(content);
    QCOMPARE(mask->palette().color(QPalette::Window), QColor(Qt::black));
    QVERIFY(!mask->isVisible());
    auto *later = new QLabel(m_window);
    later->setGeometry(0, 0, 20, 20);
    later->show();

    content->show();
    QCOMPARE(m_window->childAt(5, 5), mask);
    for (const QSize &size : {QSize(400, 300), QSize(700, 500)}) {
        m_window->resize(size);
        QCOMPARE(mask->geometry(), QRect(QPoint(0, 0), size));
        mask->layout()->activate();
        const QPoint away = content->geometry().center() - m_window->rect().center();
        QVERIFY(away.manhattanLength() <= 2);
    }
    content->hide();
    QCOMPARE(m_window->childAt(5, 5), later);
    content->show();
    delete content;
    QVERIFY2(mask && !mask->isVisible(), "the mask stays until its window goes");
}

void KovaSheetTest::maskMindsItsOwnContentOnly()
{
    const auto createMask = [](QWidget *content, QWidget *parent) {
        KovaMask::createMask(content, parent, KovaMask::dimColor);
    };
    using Move = std::function<void(QWidget *)>;
    const QPair<const char *, Move> moves[] = {
        {"into a new mask", [&](auto *content) { createMask(content, m_window); }},
        {"over the same parent", [&](auto *content) { createMask(content, nullptr); }},
        {"out of the mask", [&](auto *content) { content->setParent(m_window); }},
    };
    for (const auto &[name, move] : moves) {
        auto *content = new QLabel("content");
        createMask(content, m_window);
        const QPointer<QWidget> old = maskOf(content);
        content->show();
        move(content);
        content->show();
        QVERIFY2(!old->isVisible(), name);
        const QPoint center = content->mapTo(m_window, content->rect().center());
        QVERIFY2(m_window->childAt(center) == content, name);
        old->show();
        content->hide();
        QVERIFY2(old->isVisible(), name);
        old->hide();
    }
}

void KovaSheetTest::maskIsDeletedWhenEmpty()
{
    const auto masks = [this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_window->findChildren<KovaMask *>().size();
    };
    for (const bool isShown : {false, true}) {
        auto *content = new QLabel("content");
        KovaMask::createMask(content, m_window, Qt::black, KovaMask::DeleteWhenEmpty);
        content->setVisible(isShown);
        content->hide();
        QCOMPARE(masks(), 1);
        // The mask that it leaves goes, and takes the content along no more.
        KovaMask::createMask(content, nullptr, Qt::black, KovaMask::DeleteWhenEmpty);
        QCOMPARE(masks(), 1);
        content->setVisible(isShown);
        delete content;
        QCOMPARE(masks(), 0);
    }

    // Those of the message functions stay until somebody says otherwise.
    QTimer::singleShot(0, m_window, [this] { visibleSheet(m_window)->quit(); });
    showInfoMsg(QString(), "Done.", m_window);
    QCOMPARE(masks(), 1);
    m_window->findChild<KovaMask *>()->setDeletionPolicy(KovaMask::DeleteWhenEmpty);
    QCOMPARE(masks(), 0);
}

void KovaSheetTest::sheetPaintsBodyAndShadow()
{
    KovaSheet sheet(nullptr);
    const int m = kovaPx(22);
    sheet.resize(500, 300);
    QImage image(sheet.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    sheet.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);

    const QRect body = sheet.rect().adjusted(m, m, -m, -m);
    QCOMPARE(sheet.contentsRect(), body);
    for (const QPoint &corner :
         {body.topLeft(), body.topRight(), body.bottomLeft(), body.bottomRight()})
        QCOMPARE(image.pixelColor(corner), QColor(Qt::white));

    // Corners are whole pictures, edges stretched ones.
    const int right = 500 - m;
    const int bottom = 300 - m;
    const std::pair<const char *, QRect> parts[] = {
        {"lt", {0, 0, m, m}},          {"rt", {right, 0, m, m}},
        {"lb", {0, bottom, m, m}},     {"rb", {right, bottom, m, m}},
        {"l", {0, m, m, 300 - 2 * m}}, {"r", {right, m, m, 300 - 2 * m}},
        {"t", {m, 0, 500 - 2 * m, m}}, {"b", {m, bottom, 500 - 2 * m, m}},
    };
    for (const auto &[name, place] : parts) {
        const QString picture = QString("bg_tutorial_%1").arg(name);
        const QPixmap pixmap = getGlobalImage(picture, ImageManager::Default);
        const QImage expected = pixmap.scaled(place.size()).toImage();
        QVERIFY2(image.copy(place) == expected.convertToFormat(image.format()), name);
        QVERIFY2(expected.pixelColor(expected.rect().center()).alpha() > 0, name);
    }

    // Too small for its shadow.
    for (const int side : {1, 2 * m}) {
        sheet.resize(side, side);
        QVERIFY(!sheet.grab().isNull());
    }
}

void KovaSheetTest::sheetsFitTheirWindow_data()
{
    QTest::addColumn<bool>("asksForText");
    QTest::addColumn<QString>("text");
    for (const bool asksForText : {false, true}) {
        const char *kind = asksForText ? "input" : "message";
        QTest::addRow("%s", kind) << asksForText << "Delete this file for good?";
        QTest::addRow("%s, forty lines", kind) << asksForText << fortyLines;
        QTest::addRow("%s, a long word", kind) << asksForText << QString("unbreakable").repeated(9);
    }
}

void KovaSheetTest::sheetsFitTheirWindow()
{
    QFETCH(bool, asksForText);
    QFETCH(QString, text);
    const QSize large(kovaPx(620), kovaPx(300));
    m_window->resize(large);
    QWidget owner(m_window);
    owner.setFixedWidth(kovaPx(120));
    const KovaSheet *sheet = showNewSheet(asksForText, text, &owner);
    QVERIFY(isInOrder(sheet));
    // However narrow its owner is.
    const auto buttons = sheet->findChildren<QPushButton *>();
    QCOMPARE(placeOf(buttons[0]).top(), placeOf(buttons[1]).top());
    for (const QPushButton *button : buttons)
        QVERIFY(button->width() >= button->sizeHint().width());
    QCoreApplication::processEvents();
    const QRect first = sheet->geometry();
    const std::pair<int, int> sizes[] = {{560, 300}, {320, 300}, {240, 300},
                                         {120, 300}, {240, 200}, {560, 160}};
    for (const auto &[width, height] : sizes) {
        m_window->resize(kovaPx(width), kovaPx(height));
        for (const char *when : {"at once", "later"}) {
            QVERIFY2(isInOrder(sheet),
                     qPrintable(QString("%1 by %2, %3").arg(width).arg(height).arg(when)));
            QCoreApplication::processEvents();
        }
    }
    m_window->resize(large);
    QCoreApplication::processEvents();
    QCOMPARE(sheet->geometry(), first);
}

void KovaSheetTest::longTextScrolls_data()
{
    QTest::addColumn<bool>("asksForText");
    QTest::newRow("message") << false;
    QTest::newRow("input") << true;
}

void KovaSheetTest::longTextScrolls()
{
    QFETCH(bool, asksForText);
    m_window->resize(kovaPx(600), kovaPx(300));
    showActive(m_window);
    KovaSheet *sheet = showNewSheet(asksForText, "Short.", m_window);
    QVERIFY(!sheet->findChild<QScrollArea *>());
    QWidget *focus = m_window->focusWidget();
    if (auto *input = qobject_cast<KovaInputSheet *>(sheet))
        input->setText(fortyLines);
    else
        qobject_cast<KovaMessageSheet *>(sheet)->setText(fortyLines);
    QCOMPARE(m_window->focusWidget(), focus);

    const auto *area = sheet->findChild<QScrollArea *>();
    const QScrollBar *bar = area->verticalScrollBar();
    const QPoint besideTheText = placeOf(area->viewport()).topRight();
    QCOMPARE(m_window->grab().toImage().pixelColor(besideTheText), QColor(Qt::white));
    press(m_window, Qt::Key_Down);
    const int step = bar->value();
    QVERIFY(step >= kovaPx(20));
    press(m_window, Qt::Key_PageDown);
    QVERIFY(bar->value() >= step + bar->pageStep() / 2);
    press(m_window, Qt::Key_PageUp);
    press(m_window, Qt::Key_Up);
    QCOMPARE(bar->value(), 0);
    // From a button as well; and the way back by Tab leads to the beginning of a text.
    press(m_window, Qt::Key_Tab);
    press(m_window, Qt::Key_PageDown);
    QVERIFY(bar->value() > 0);
    press(m_window, Qt::Key_Backtab);
    QCOMPARE(bar->value() == 0, !asksForText);
    QVERIFY(sheet->isVisible());
}

void KovaSheetTest::heapIsKnownFromEveryFormOfNew()
{
    struct alignas(64) AlignedSheet : KovaSheet
    {
        using KovaSheet::KovaSheet;
    };
    const std::unique_ptr<KovaSheet> silent(new (std::nothrow) KovaInputSheet(m_window));
    QVERIFY(silent->isOnHeap());
    const std::unique_ptr<AlignedSheet> aligned(new AlignedSheet(m_window));
    QVERIFY(aligned->isOnHeap());
    QCOMPARE(quintptr(aligned.get()) % 64, quintptr(0));
    const auto *outer = new KovaSheet(new KovaSheet(m_window));
    QVERIFY(outer->isOnHeap() && qobject_cast<KovaSheet *>(outer->parent())->isOnHeap());

    QVERIFY(!std::make_shared<KovaInputSheet>(m_window)->isOnHeap());
}

void KovaSheetTest::labelsAndLayoutsFollow()
{
    MessageLabel label;
    label.setText(QString("A sentence that is longer than a word. ").repeated(5));
    label.setWordWrap(true);
    label.show();
    for (const int width : {300, 100, 500}) {
        label.resize(width, 10);
        QCOMPARE(label.height(), label.heightForWidth(width));
    }
    QVERIFY(label.height() > label.fontMetrics().height());

    KovaSheet sheet(nullptr);
    auto *first = new QLabel("first");
    auto *second = new QLabel("second");
    sheet.setWidget(first);
    sheet.setWidget(second);
    QCOMPARE(sheet.layout()->count(), 1);
    QCOMPARE(sheet.layout()->itemAt(0)->widget(), second);
    QCOMPARE(first->parentWidget(), &sheet);

    // On a window of its own no mask lays the sheet out a second time.
    KovaInputSheet input("short", m_window);
    KovaMessageSheet message(KovaMessageSheet::Question, "short", m_window);
    const auto grows = [&](auto &shown) {
        shown.showSheet();
        const int before = shown.height();
        shown.setText(label.text());
        return shown.height() > before && shown.height() == shown.sizeHint().height();
    };
    QVERIFY2(grows(input), "the sheet with a field");
    QVERIFY2(grows(message), "the sheet with a message");
}

void KovaSheetTest::typesChooseIconAndButtons()
{
    const int one = QMessageBox::Ok;
    const int two = QMessageBox::Ok | QMessageBox::Discard;
    // The type, its icon, its buttons, the text of the first and the style.
    const std::tuple<int, const char *, int, const char *, const char *> cases[] = {
        {0, "app_img", 0, "", "processing"},
        {1, "icon_information", one, "OK", "other"},
        {2, "icon_warning", one, "OK", "other"},
        {3, "icon_question", two, "OK", "other"},
        {5, "icon_warning", two, "OK", "other"},
        {6, "", 0, "", "processing"},
        {9 /* unknown */, "", 0, "", "other"},
        {4, "icon_information", two, "Upgrade now", "other"},
    };
    for (const auto &[type, image, buttons, text, style] : cases) {
        const std::string name = "type " + std::to_string(type);
        const char *row = name.c_str();
        const KovaMessageSheet sheet(KovaMessageSheet::MessageType(type), "text", m_window);
        const QString styleKey = QString("component.message_sheet_") + style;
        QVERIFY2(sheet.styleSheet() == getStyleSheet(styleKey, false), row);
        QImage icon;
        for (const QLabel *label : sheet.findChildren<QLabel *>()) {
            if (label->pixmap(Qt::ReturnByValue).width() > 0)
                icon = label->pixmap(Qt::ReturnByValue).toImage();
        }
        QVERIFY2(icon.isNull() == !*image, row);
        QVERIFY2(!*image || icon == getGlobalImage(image, ImageManager::Default).toImage(), row);
        const int actual = sheet.findChild<QDialogButtonBox *>()->standardButtons();
        QVERIFY2(actual == buttons, row);
        const auto *ok = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok));
        QVERIFY2(!ok || (ok->text() == text && ok->isDefault()), row);
    }
    const KovaMessageSheet custom(KovaMessageSheet::Upgrade, "text", {"Get it", ""}, m_window);
    QCOMPARE(custom.button(QMessageBox::Ok)->text(), "Get it");
    QCOMPARE(custom.button(QMessageBox::Ok)->minimumSize(), QSize(kovaPx(120), kovaPx(28)));
    QCOMPARE(custom.button(QMessageBox::Discard)->text(), "Cancel");
}

void KovaSheetTest::textsComeAndGo()
{
    const QString main = "<b style='font-size: 10px'>%1</b> &lt; 2";
    const QString scaled = QString(main).replace("10px", QString("%1px").arg(kovaPx(10)));
    const auto paragraph = [](int lineHeight, const QString &text) {
        return QString("<p style='line-height: %1px;'>").arg(kovaPx(lineHeight)) + text + "</p>";
    };
    KovaMessageSheet sheet(KovaMessageSheet::Warning, main, "%1 tiny", m_window);
    QCOMPARE(labelWith(sheet, "font-size")->text(), paragraph(24, scaled));
    const QPointer<QLabel> first = labelWith(sheet, "tiny");
    QCOMPARE(first->text(), paragraph(20, "%1 tiny"));
    QCOMPARE(first->styleSheet(), getStyleSheet("component.message_sheet_informative_text", false));

    QCOMPARE(QAccessible::queryAccessibleInterface(&sheet)->role(), QAccessible::Dialog);
    QCOMPARE(spoken(&sheet), "%1 < 2");
    sheet.setAccessibleName("Own name");
    QCOMPARE(spoken(&sheet), "Own name");

    sheet.setInformativeText(QString());
    QVERIFY(!first->isVisibleTo(&sheet));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first);
    sheet.setInformativeText(QString());
    sheet.setInformativeText("again");
    QVERIFY(labelWith(sheet, "again"));

    KovaInputSheet input(main, m_window);
    QCOMPARE(input.styleSheet(), getStyleSheet("component.message_sheet_other", false));
    QCOMPARE(labelWith(input, "font-size")->text(), paragraph(20, scaled));
    QCOMPARE(spoken(input.getLineEdit()), "%1 < 2");
    QCOMPARE(input.getLineEdit()->styleSheet(), getStyleSheet("component.lineedit", false));
    QCOMPARE(input.button(QMessageBox::Ok)->text(), "OK");
    QCOMPARE(input.button(QMessageBox::Discard)->text(), "Cancel");
}

void KovaSheetTest::widthFollowsTheParent()
{
    // In design pixels: the parent, a message sheet and an input sheet over it.
    const int widths[][3] = {{2000, 540, 480}, {560, 520, 480}, {544, 504, 480},
                             {540, 480, 480},  {518, 478, 478}, {400, 360, 360}};
    for (const auto &[parent, message, input] : widths) {
        m_window->resize(qRound(parent * DPIinfo::getInstance()->getDPI()), 400);
        const KovaMessageSheet sheet(KovaMessageSheet::Warning, "a", m_window);
        const QSize actual(sheet.width(), KovaInputSheet("a", m_window).width());
        QVERIFY2(actual == QSize(kovaPx(message), kovaPx(input)),
                 qPrintable(QString::number(parent)));
    }
    m_window->resize(kovaPx(10), 400);
    QVERIFY(KovaMessageSheet(KovaMessageSheet::Warning, "a", m_window).width() > 0);
    QVERIFY(KovaInputSheet("a", m_window).width() > 0);
}

void KovaSheetTest::heightFollowsTheText()
{
    const QString sentence = "A sentence that is longer than a word. ";
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Short.", sentence.repeated(12), m_window);
    KovaMask::createMask(&sheet, m_window, KovaMask::dimColor);
    // From the first frame on.
    sheet.showSheet();
    QVERIFY(isInOrder(&sheet));
    const int height = sheet.height();
    // Accept before the second button, both at the right, on every platform.
    const QAbstractButton *second = sheet.button(QMessageBox::Discard);
    QVERIFY(sheet.button(QMessageBox::Ok)->geometry().right() < second->x());
    QCOMPARE(second->mapTo(&sheet, second->rect().topRight()).x(),
             sheet.contentsRect().right() - sheet.layout()->contentsMargins().right());

    sheet.setInformativeText(sentence.repeated(2));
    QCoreApplication::processEvents();
    QVERIFY(isInOrder(&sheet));
    QVERIFY(sheet.height() < height - kovaPx(60));

    // Both of them together in the bar at the side.
    sheet.setText(sentence.repeated(30));
    sheet.setInformativeText(sentence.repeated(30));
    QCoreApplication::processEvents();
    QVERIFY(sheet.findChild<QScrollArea *>()->isVisible());
    QVERIFY(isInOrder(&sheet));
}

void KovaSheetTest::changingTheTypeConnectsAgain()
{
    KovaMessageSheet sheet(KovaMessageSheet::Information, "text", m_window);
    sheet.setMessageType(KovaMessageSheet::Question);
    sheet.setDefaultButton(nullptr);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.showSheet();
    sheet.button(QMessageBox::Discard)->click();
    QCOMPARE(finished, (QList<QList<QVariant>>{{refused}, {refused}}));
}

void KovaSheetTest::focusOfATextIsSeen()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "main", "details", m_window);
    showActive(m_window);
    sheet.showSheet();
    for (const char *text : {"main", "details"}) {
        QLabel *label = labelWith(sheet, text);
        label->setFocus();
        const QImage focused = label->grab().toImage();
        sheet.button(QMessageBox::Ok)->setFocus();
        const QImage plain = label->grab().toImage();
        QVERIFY2(focused != plain, text);
        const QRect inside = plain.rect().adjusted(kovaPx(4), 0, 0, 0);
        QVERIFY2(focused.copy(inside) == plain.copy(inside), text);
    }
}

void KovaSheetTest::movieRunsWhileTheSheetIsShown()
{
    QLabel elsewhere;
    QPointer<QMovie> movie;
    for (const bool isShared : {false, true}) {
        {
            KovaMessageSheet sheet("Copying…", themeFolder() + "/images/processing.gif", m_window);
            for (const QLabel *label : sheet.findChildren<QLabel *>())
                movie = label->movie() ? label->movie() : movie.data();
            QVERIFY(movie);
            QCOMPARE(movie->scaledSize(), QSize(kovaPxRounded(32), kovaPxRounded(32)));
            sheet.showSheet();
            QCOMPARE(movie->state(), QMovie::Running);
            sheet.done(0);
            QCOMPARE(movie->state(), QMovie::NotRunning);
            if (isShared)
                elsewhere.setMovie(movie);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(bool(movie), isShared);
    }
    delete movie;
    KovaMessageSheet("Copying…", "/no/such/movie.gif", m_window).showSheet();
}

QTEST_MAIN(KovaSheetTest)
#include "kova-sheet-test.moc"
