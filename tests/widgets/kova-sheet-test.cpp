// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>
#include <QtWidgets>

namespace {

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

// Whether buttons and text of @p sheet are inside its window and clear of each other.
bool isInOrder(const KovaSheet *sheet)
{
    const int m = kovaPx(22);
    const QRect body = placeOf(sheet).adjusted(m, m, -m, -m);
    const auto *area = sheet->findChild<QScrollArea *>();
    const QWidget *text = sheet->findChild<MessageLabel *>();
    const bool isScrolled = area && area->isVisible();
    const QRect texts = placeOf(isScrolled ? area : text);
    if (!sheet->window()->rect().contains(placeOf(sheet)) || !body.contains(texts)
        || texts.height() < text->fontMetrics().height())
        return false;
    QRect before;
    for (const QAbstractButton *button : sheet->findChild<QDialogButtonBox *>()->buttons()) {
        const QRect place = placeOf(button);
        if (!body.contains(place) || place.top() <= texts.bottom() || place.intersects(before))
            return false;
        before = place;
    }
    if (!isScrolled)
        return text->height() >= text->heightForWidth(text->width());
    // What is cut off can be scrolled to.
    const QSize reach(area->horizontalScrollBar()->maximum(), area->verticalScrollBar()->maximum());
    const QSize shown = area->viewport()->size() + reach;
    return area->widget()->size().boundedTo(shown) == area->widget()->size()
        && area->widget()->rect().contains(text->geometry());
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
    void maskIsDeletedWhenEmpty();
    void sheetPaintsBodyAndShadow();
    void sheetsFitTheirWindow_data();
    void sheetsFitTheirWindow();
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
    KovaMask::createMask(content, &window, KovaMask::dimColor);
    const QPointer<QWidget> mask = maskOf(content);
    QVERIFY(!mask->isVisible());
    auto *later = new QLabel(&window);
    later->setGeometry(0, 0, 20, 20);
    later->show();

    content->show();
    QCOMPARE(window.childAt(5, 5), mask);
    for (const QSize &size : {QSize(400, 300), QSize(700, 500)}) {
        window.resize(size);
        QCOMPARE(mask->geometry(), QRect(QPoint(0, 0), size));
        mask->layout()->activate();
        const QPoint away = content->geometry().center() - window.rect().center();
        QVERIFY(away.manhattanLength() <= 2);
    }
    content->hide();
    QCOMPARE(window.childAt(5, 5), later);
    content->show();
    delete content;
    QVERIFY2(mask && !mask->isVisible(), "the mask stays until its window goes");
}

void KovaSheetTest::maskMindsItsOwnContentOnly_data()
{
    QTest::addColumn<Move>("move");
    const auto mask = [](QWidget *content, QWidget *parent) {
        KovaMask::createMask(content, parent, KovaMask::dimColor);
    };
    QTest::newRow("into a new mask") << Move(mask);
    QTest::newRow("into a new mask over the same parent")
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
    QWidget window;
    window.resize(400, 300);
    window.show();
    auto *content = new QLabel("content");
    KovaMask::createMask(content, &window, KovaMask::dimColor);
    const QPointer<QWidget> old = maskOf(content);
    content->show();
    move(content, &window);
    content->show();
    QVERIFY(!old->isVisible());
    QCOMPARE(window.childAt(content->mapTo(&window, content->rect().center())), content);
    old->show();
    content->hide();
    QVERIFY(old->isVisible());
}

void KovaSheetTest::maskIsDeletedWhenEmpty()
{
    QWidget window;
    window.show();
    const auto masks = [&window] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.findChildren<KovaMask *>().size();
    };
    for (const bool isShown : {false, true}) {
        auto *content = new QLabel("content");
        KovaMask::createMask(content, &window, Qt::black, KovaMask::DeleteWhenEmpty);
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
    QTimer::singleShot(0, &window, [&window] { visibleSheet(&window)->quit(); });
    showInfoMsg(QString(), "Done.", &window);
    QCOMPARE(masks(), 1);
    window.findChild<KovaMask *>()->setDeletionPolicy(KovaMask::DeleteWhenEmpty);
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
        const QImage expected = getGlobalImage(picture, ImageManager::Default)
                                    .scaled(place.size())
                                    .toImage()
                                    .convertToFormat(image.format());
        QCOMPARE(image.copy(place), expected);
        QVERIFY(expected.pixelColor(expected.rect().center()).alpha() > 0);
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
    QWidget owner(&window);
    owner.setFixedWidth(kovaPx(120));
    window.show();
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
        window.resize(kovaPx(width), kovaPx(height));
        for (const char *when : {"at once", "later"}) {
            QVERIFY2(isInOrder(sheet),
                     qPrintable(QString("%1 by %2, %3").arg(width).arg(height).arg(when)));
            QCoreApplication::processEvents();
        }
    }
    window.resize(large);
    QCoreApplication::processEvents();
    QCOMPARE(sheet->geometry(), first);
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
        const QString lines = QString("A line of forty<br>").repeated(40);
        if (asksForText)
            qobject_cast<KovaInputSheet *>(sheet)->setText(lines);
        else
            qobject_cast<KovaMessageSheet *>(sheet)->setText(lines);
        QCOMPARE(window.focusWidget(), focus);

        const auto *area = sheet->findChild<QScrollArea *>();
        const QScrollBar *bar = area->verticalScrollBar();
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
        QCOMPARE(bar->value() == 0, !asksForText);
        QVERIFY(sheet->isVisible());
    }
}

void KovaSheetTest::heapIsKnownFromEveryFormOfNew()
{
    struct alignas(64) AlignedSheet : KovaSheet
    {
        using KovaSheet::KovaSheet;
    };
    QWidget window;
    const std::unique_ptr<KovaSheet> silent(new (std::nothrow) KovaInputSheet(&window));
    QVERIFY(silent->isOnHeap());
    const std::unique_ptr<AlignedSheet> aligned(new AlignedSheet(&window));
    QVERIFY(aligned->isOnHeap());
    QCOMPARE(quintptr(aligned.get()) % 64, quintptr(0));
    const auto *outer = new KovaSheet(new KovaSheet(&window));
    QVERIFY(outer->isOnHeap() && qobject_cast<KovaSheet *>(outer->parent())->isOnHeap());

    QVERIFY(!std::make_shared<KovaInputSheet>(&window)->isOnHeap());
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

    // On a window of its own no mask lays the sheet out a second time.
    QWidget window;
    window.resize(kovaPx(700), kovaPx(500));
    KovaInputSheet input("short", &window);
    KovaMessageSheet message(KovaMessageSheet::Question, "short", &window);
    window.show();
    const auto grows = [&](auto &shown) {
        shown.showSheet();
        const int before = shown.height();
        shown.setText(label.text());
        return shown.height() > before && shown.height() == shown.sizeHint().height();
    };
    QVERIFY2(grows(input), "the sheet with a field");
    QVERIFY2(grows(message), "the sheet with a message");
}

QTEST_MAIN(KovaSheetTest)
#include "kova-sheet-test.moc"
