#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QAccessible>
#include <QLabel>
#include <QVBoxLayout>
#include <QtTest>

namespace {

QWidget *maskOf(const QWidget *content)
{
    return qobject_cast<KovaMask *>(content->parentWidget());
}

} // namespace

class KovaSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void maskNeedsContentAndParent();
    void maskFollowsContentAndWindow();
    void sheetPaintsBodyAndShadow();
    void setWidgetReplacesTheLayout();
};

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

    content->hide();
    delete content;
    QVERIFY2(mask && !mask->isVisible(), "the mask stays until its window goes");
    window.resize(300, 300);
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

    // Around it nothing but shadow, which ends before the corner.
    for (const QPoint &beside : {QPoint(m - 1, 150), QPoint(500 - m, 150), QPoint(250, m - 1),
                                 QPoint(250, 300 - m), QPoint(m - 1, m - 1)}) {
        const QColor shadow = image.pixelColor(beside);
        QVERIFY(shadow.alpha() > 0 && shadow.alpha() < 255);
    }
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);

    // Too small for its shadow.
    for (const int side : {1, 2 * m}) {
        sheet.resize(side, side);
        QVERIFY(!sheet.grab().isNull());
    }
}

void KovaSheetTest::setWidgetReplacesTheLayout()
{
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
