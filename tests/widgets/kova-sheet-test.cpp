// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

QWidget *maskOf(const QWidget *content)
{
    return qobject_cast<KovaMask *>(content->parentWidget());
}

// A sheet over @p window that is up, with two buttons.
KovaSheet *showNewSheet(bool asksForText, const QString &text, QWidget *owner)
{
    if (asksForText) {
        auto *sheet = new KovaInputSheet(text, owner);
        KovaMask::createMask(sheet, owner->window(), QColor(0, 0, 0, 20));
        sheet->showSheet();
        return sheet;
    }
    auto *sheet = new KovaMessageSheet(KovaMessageSheet::Question, text, owner);
    KovaMask::createMask(sheet, owner->window(), QColor(0, 0, 0, 20));
    sheet->showSheet();
    return sheet;
}

QRect placeOf(const QWidget *widget)
{
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

// Whether buttons and text of @p sheet are inside its window and clear of each other.
bool isInOrder(const KovaSheet *sheet)
{
    const QRect body = placeOf(sheet).adjusted(kovaPx(22), kovaPx(22), -kovaPx(22), -kovaPx(22));
    if (!sheet->window()->rect().contains(placeOf(sheet)))
        return false;
    const auto *area = sheet->findChild<QScrollArea *>();
    const QWidget *text = sheet->findChild<MessageLabel *>();
    const bool isScrolled = area && area->isVisible();
    const QRect texts = placeOf(isScrolled ? area : text);
    if (texts.height() < text->fontMetrics().height() || !body.contains(texts))
        return false;
    int above = texts.bottom();
    QRect before;
    for (const QAbstractButton *button : sheet->findChild<QDialogButtonBox *>()->buttons()) {
        const QRect place = placeOf(button);
        if (!body.contains(place) || place.top() <= above || place.intersects(before))
            return false;
        before = place;
    }
    // What is cut off can be scrolled to.
    return isScrolled ? area->widget()->height()
                                <= area->verticalScrollBar()->maximum() + area->viewport()->height()
                            && area->widget()->width() <= area->horizontalScrollBar()->maximum()
                                                              + area->viewport()->width()
                            && area->widget()->rect().contains(text->geometry())
                      : text->height() >= text->heightForWidth(text->width());
}

using Move = std::function<void(QWidget *content, QWidget *window)>;

} // namespace

Q_DECLARE_METATYPE(Move)

class KovaSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void maskNeedsContentAndParent();
    void maskFollowsContentAndWindow();
    void maskMindsItsOwnContentOnly_data();
    void maskMindsItsOwnContentOnly();
    void sheetPaintsBodyAndShadow();
    void sheetsFitTheirWindow_data();
    void sheetsFitTheirWindow();
    void sheetIsWideEnoughForItsButtons();
    void longTextScrolls();
    void heapIsKnownFromEveryFormOfNew();
    void labelsAndLayoutsFollow();
};

void KovaSheetTest::initTestCase()
{
    {
        // A host without pictures.
        WarningCatcher warnings;
        KovaSheet sheet(nullptr);
        sheet.resize(200, 200);
        QCOMPARE(sheet.grab().toImage().pixelColor(100, 100), QColor(Qt::white));
        QStringList expected;
        for (const char *side : {"l", "r", "t", "b", "lt", "rt", "lb", "rb"})
            expected.append(QString("Cannot load pixmap \"bg_tutorial_%1\"").arg(side));
        QCOMPARE(warnings.take(), expected);
    }
    setUpHost();
}

void KovaSheetTest::maskNeedsContentAndParent()
{
    QWidget window;
    QCOMPARE(KovaMask::createMask(nullptr, &window, Qt::black), nullptr);
    QVERIFY(window.children().isEmpty());
    QLabel orphan;
    QCOMPARE(KovaMask::createMask(&orphan, nullptr, Qt::black), nullptr);

    auto *content = new QLabel(&window);
    QCOMPARE(KovaMask::createMask(content, nullptr, Qt::black), content);
    QCOMPARE(maskOf(content)->parentWidget(), &window);
    QCOMPARE(maskOf(content)->palette().color(QPalette::Window), QColor(Qt::black));
}

void KovaSheetTest::maskFollowsContentAndWindow()
{
    QWidget window;
    window.resize(400, 300);
    window.show();
    auto *content = new QLabel("content");
    content->setFixedSize(100, 50);
    KovaMask::createMask(content, &window, QColor(0, 0, 0, 20));
    const QPointer<QWidget> mask = maskOf(content);
    QVERIFY(!mask->isVisible());
    auto *later = new QLabel(&window);
    later->setGeometry(0, 0, 20, 20);
    later->show();

    content->show();
    QVERIFY(mask->isVisible());
    QCOMPARE(window.childAt(5, 5), mask);
    for (const QSize &size : {QSize(400, 300), QSize(700, 500)}) {
        window.resize(size);
        QCOMPARE(mask->geometry(), QRect(QPoint(0, 0), size));
        mask->layout()->activate();
        const QPoint away = content->geometry().center() - window.rect().center();
        QVERIFY(away.manhattanLength() <= 2);
    }
    content->hide();
    QVERIFY(!mask->isVisible());
    content->show();
    QVERIFY(mask->isVisible());

    delete content;
    QVERIFY2(mask && !mask->isVisible(), "the mask stays until its window goes");
    QCOMPARE(window.childAt(5, 5), later);
    window.resize(300, 300);
}

void KovaSheetTest::maskMindsItsOwnContentOnly_data()
{
    QTest::addColumn<Move>("move");
    const auto mask = [](QWidget *content, QWidget *parent) {
        KovaMask::createMask(content, parent, QColor(0, 0, 0, 20));
    };
    QTest::newRow("into a new mask") << Move([=](QWidget *content, QWidget *window) {
        mask(content, window);
        QCOMPARE(maskOf(content)->parentWidget(), window);
    });
    QTest::newRow("into a new mask over the parent of the old one")
        << Move([=](QWidget *content, QWidget *window) {
               mask(content, nullptr);
               QCOMPARE(maskOf(content)->parentWidget(), window);
           });
    QTest::newRow("out of the mask")
        << Move([](QWidget *content, QWidget *window) { content->setParent(window); });
}

void KovaSheetTest::maskMindsItsOwnContentOnly()
{
    QFETCH(Move, move);
    for (const bool shown : {false, true}) {
        QWidget window;
        window.resize(400, 300);
        window.show();
        auto *content = new QLabel("content");
        KovaMask::createMask(content, &window, QColor(0, 0, 0, 20));
        const QPointer<QWidget> old = maskOf(content);
        content->setVisible(shown);
        move(content, &window);
        content->show();
        QVERIFY(content->isVisible());
        QVERIFY(!old->isVisible());
        QCOMPARE(window.childAt(content->mapTo(&window, content->rect().center())), content);
        old->show();
        content->hide();
        QVERIFY(old->isVisible());
    }
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
        QPixmap picture =
            getGlobalImage(QString("bg_tutorial_%1").arg(name), ImageManager::Default);
        if (qstrlen(name) == 1)
            picture = picture.scaled(place.size());
        QImage expected(place.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        QPainter(&expected).drawPixmap(QRect(QPoint(), place.size()), picture);
        QCOMPARE(image.copy(place), expected);
        QVERIFY(expected.pixelColor(expected.rect().center()).alpha() > 0);
    }
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);

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
        QTest::addRow("%s, forty lines", kind)
            << asksForText << QString("A line of forty<br>").repeated(40);
        QTest::addRow("%s, a long word", kind) << asksForText << QString("unbreakable").repeated(9);
    }
}

void KovaSheetTest::sheetsFitTheirWindow()
{
    QFETCH(bool, asksForText);
    QFETCH(QString, text);
    const QSize large(kovaPx(620), kovaPx(300));
    QWidget window;
    window.resize(large);
    window.show();
    const KovaSheet *sheet = showNewSheet(asksForText, text, &window);
    QVERIFY(isInOrder(sheet));
    QCoreApplication::processEvents();
    const QRect first = sheet->geometry();
    const std::pair<int, int> sizes[] = {{560, 300}, {320, 300}, {240, 300},
                                         {120, 300}, {240, 200}, {560, 160}};
    for (const auto &[width, height] : sizes) {
        window.resize(kovaPx(width), kovaPx(height));
        QVERIFY2(isInOrder(sheet), qPrintable(QString("%1 by %2").arg(width).arg(height)));
        QCoreApplication::processEvents();
        QVERIFY2(isInOrder(sheet), qPrintable(QString("%1 by %2, later").arg(width).arg(height)));
    }
    window.resize(large);
    QCoreApplication::processEvents();
    QCOMPARE(sheet->geometry(), first);
}

void KovaSheetTest::sheetIsWideEnoughForItsButtons()
{
    QWidget window;
    window.resize(kovaPx(700), kovaPx(400));
    QWidget owner(&window);
    owner.setFixedWidth(kovaPx(120));
    window.show();
    for (const bool asksForText : {false, true}) {
        const KovaSheet *sheet = showNewSheet(asksForText, "Go?", &owner);
        QVERIFY(isInOrder(sheet));
        const auto buttons = sheet->findChildren<QPushButton *>();
        QCOMPARE(placeOf(buttons[0]).top(), placeOf(buttons[1]).top());
        for (const QPushButton *button : buttons)
            QVERIFY(button->width() >= button->sizeHint().width());
        delete sheet;
    }
}

void KovaSheetTest::longTextScrolls()
{
    for (const bool asksForText : {false, true}) {
        QWidget window;
        window.resize(kovaPx(600), kovaPx(300));
        showActive(&window);
        KovaSheet *sheet = showNewSheet(asksForText, "Short.", &window);
        QVERIFY(!sheet->findChild<QScrollArea *>());
        QWidget *focus = window.focusWidget();
        QVERIFY(sheet->isAncestorOf(focus));
        const QString lines = QString("A line of forty<br>").repeated(40);
        if (asksForText)
            qobject_cast<KovaInputSheet *>(sheet)->setText(lines);
        else
            qobject_cast<KovaMessageSheet *>(sheet)->setText(lines);
        QCOMPARE(window.focusWidget(), focus);

        QSignalSpy finished(sheet, &KovaSheet::finished);
        const auto *area = sheet->findChild<QScrollArea *>();
        const QScrollBar *bar = area->verticalScrollBar();
        QVERIFY(bar->isVisible());
        const QPoint besideTheText = placeOf(area->viewport()).topRight();
        QCOMPARE(window.grab().toImage().pixelColor(besideTheText), QColor(Qt::white));
        press(&window, Qt::Key_Down);
        const int step = bar->value();
        QVERIFY(step >= kovaPx(20));
        press(&window, Qt::Key_PageDown);
        QVERIFY(bar->value() >= step + bar->pageStep() / 2);
        press(&window, Qt::Key_PageUp);
        press(&window, Qt::Key_Up);
        QCOMPARE(bar->value(), 0);
        // From a button as well; and the way back by Tab leads to the beginning of a text.
        press(&window, Qt::Key_Tab);
        press(&window, Qt::Key_PageDown);
        QVERIFY(bar->value() > 0);
        press(&window, Qt::Key_Backtab);
        QCOMPARE(window.focusWidget(), focus);
        QCOMPARE(bar->value() == 0, !asksForText);
        QVERIFY(finished.isEmpty());
    }
}

void KovaSheetTest::heapIsKnownFromEveryFormOfNew()
{
    struct alignas(64) AlignedSheet : KovaSheet
    {
        using KovaSheet::KovaSheet;
    };
    QWidget window;
    const std::unique_ptr<KovaSheet> throwing(
        new KovaMessageSheet(KovaMessageSheet::Question, &window));
    QVERIFY(throwing->isOnHeap());
    const std::unique_ptr<KovaSheet> silent(new (std::nothrow) KovaInputSheet(&window));
    QVERIFY(silent->isOnHeap());
    const std::unique_ptr<AlignedSheet> aligned(new AlignedSheet(&window));
    QVERIFY(aligned->isOnHeap());
    QCOMPARE(quintptr(aligned.get()) % 64, quintptr(0));
    const std::unique_ptr<QWidget> inner(new KovaSheet(&window));
    const auto *outer = new KovaSheet(new KovaSheet(inner.get()));
    QVERIFY(outer->isOnHeap() && qobject_cast<KovaSheet *>(outer->parent())->isOnHeap());

    QVERIFY(!KovaSheet(&window).isOnHeap());
    QVERIFY(
        !QSharedPointer<KovaMessageSheet>::create(KovaMessageSheet::Question, &window)->isOnHeap());
    QVERIFY(!std::make_shared<KovaInputSheet>(&window)->isOnHeap());
    alignas(KovaSheet) char room[sizeof(KovaSheet)];
    auto *placed = new (room) KovaSheet(&window);
    QVERIFY(!placed->isOnHeap());
    placed->~KovaSheet();
}

void KovaSheetTest::labelsAndLayoutsFollow()
{
    MessageLabel label;
    label.setText(QString("A sentence that is longer than a word. ").repeated(5));
    label.setWordWrap(true);
    label.show();
    QMap<int, int> heights;
    for (const int width : {300, 100, 500}) {
        label.resize(width, 10);
        heights.insert(width, label.height());
    }
    QVERIFY(heights[100] > heights[300] && heights[300] > heights[500]);
    QVERIFY(heights[500] > label.fontMetrics().height());

    KovaSheet sheet(nullptr);
    auto *first = new QLabel("first");
    auto *second = new QLabel("second");
    sheet.setWidget(first);
    sheet.setWidget(second);
    QCOMPARE(sheet.layout()->count(), 1);
    QCOMPARE(sheet.layout()->itemAt(0)->widget(), second);
    QCOMPARE(first->parentWidget(), &sheet);
    QCOMPARE(QAccessible::queryAccessibleInterface(&sheet)->role(), QAccessible::Dialog);
}

QTEST_MAIN(KovaSheetTest)
#include "kova-sheet-test.moc"
