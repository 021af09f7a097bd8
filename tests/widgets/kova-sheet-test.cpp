#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QAccessible>
#include <QLabel>
#include <QVBoxLayout>
#include <QtTest>

namespace {

KovaMask *maskOf(const QWidget *content)
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
    void maskStaysWithoutContent();
    void maskCoversLaterWidgets();
    void sheetPaintsBodyAndShadow();
    void sheetTooSmallForItsShadow();
    void setWidgetReplacesTheLayout();
};

void KovaSheetTest::maskNeedsContentAndParent()
{
    QWidget window;
    QCOMPARE(KovaMask::createMask(nullptr, &window, Qt::black), nullptr);
    QVERIFY(window.children().isEmpty());

    auto orphan = std::make_unique<QLabel>();
    QCOMPARE(KovaMask::createMask(orphan.get(), nullptr, Qt::black), nullptr);

    auto *content = new QLabel(&window);
    QCOMPARE(KovaMask::createMask(content, nullptr, Qt::black), content);
    QVERIFY(maskOf(content));
    QCOMPARE(maskOf(content)->parentWidget(), &window);
    QCOMPARE(maskOf(content)->palette().color(QPalette::Window), QColor(Qt::black));
}

void KovaSheetTest::maskFollowsContentAndWindow()
{
    QWidget window;
    window.resize(400, 300);
    window.show();
    auto *content = new QLabel(QStringLiteral("content"));
    content->setFixedSize(100, 50);
    KovaMask::createMask(content, &window, QColor(0, 0, 0, 20));
    QWidget *mask = maskOf(content);
    QVERIFY(!mask->isVisible());

    content->show();
    QVERIFY(mask->isVisible());
    QCOMPARE(mask->geometry(), QRect(0, 0, 400, 300));
    const auto isCentred = [&] {
        mask->layout()->activate();
        const QPoint away = content->geometry().center() - window.rect().center();
        return away.manhattanLength() <= 2;
    };
    QVERIFY(isCentred());
    window.resize(700, 500);
    QCOMPARE(mask->size(), QSize(700, 500));
    QVERIFY(isCentred());

    content->hide();
    QVERIFY(!mask->isVisible());
    content->show();
    QVERIFY(mask->isVisible());
}

void KovaSheetTest::maskStaysWithoutContent()
{
    QWidget window;
    window.show();
    auto *content = new QLabel;
    KovaMask::createMask(content, &window, Qt::black);
    const QPointer<QWidget> mask = maskOf(content);
    content->show();
    content->hide();
    delete content;
    QVERIFY(mask);
    QVERIFY(!mask->isVisible());
    window.resize(300, 300);
}

void KovaSheetTest::maskCoversLaterWidgets()
{
    QWidget window;
    window.resize(200, 200);
    window.show();
    auto *content = new QLabel;
    KovaMask::createMask(content, &window, Qt::black);
    auto *later = new QLabel(&window);
    later->setGeometry(0, 0, 20, 20);
    later->show();
    content->show();
    QCOMPARE(window.childAt(5, 5), maskOf(content));
}

void KovaSheetTest::sheetPaintsBodyAndShadow()
{
    KovaSheet sheet(nullptr);
    const int m = kovaPx(22);
    QCOMPARE(sheet.contentsMargins(), QMargins(m, m, m, m));
    sheet.resize(500, 300);
    QImage image(sheet.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    sheet.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);

    const auto isBody = [&](int x, int y) { return image.pixelColor(x, y) == QColor(Qt::white); };
    QVERIFY(isBody(m, m));
    QVERIFY(isBody(499 - m, m));
    QVERIFY(isBody(m, 299 - m));
    QVERIFY(isBody(499 - m, 299 - m));
    QVERIFY(!isBody(m - 1, 150));
    QVERIFY(!isBody(500 - m, 150));
    QVERIFY(!isBody(250, m - 1));
    QVERIFY(!isBody(250, 300 - m));

    // The shadow fades from the body to the edge, on every side and in every corner.
    const auto alpha = [&](int x, int y) { return image.pixelColor(x, y).alpha(); };
    for (const QPoint &inner :
         {QPoint(m - 1, 150), QPoint(500 - m, 150), QPoint(250, m - 1), QPoint(250, 300 - m),
          QPoint(m - 1, m - 1), QPoint(500 - m, 300 - m)}) {
        QVERIFY2(alpha(inner.x(), inner.y()) > 0, qPrintable(QString::number(inner.x())));
    }
    QVERIFY(alpha(0, 150) < alpha(m - 1, 150));
    QVERIFY(alpha(250, 299) < alpha(250, 300 - m));
    QCOMPARE(alpha(0, 0), 0);
}

void KovaSheetTest::sheetTooSmallForItsShadow()
{
    KovaSheet sheet(nullptr);
    sheet.setMinimumSize(1, 1);
    for (const QSize &size : {QSize(1, 1), QSize(2 * kovaPx(22), 2 * kovaPx(22))}) {
        sheet.resize(size);
        QVERIFY(!sheet.grab().isNull());
    }
}

void KovaSheetTest::setWidgetReplacesTheLayout()
{
    QWidget window;
    auto *sheet = new KovaSheet(&window);
    auto *first = new QLabel(QStringLiteral("first"));
    auto *second = new QLabel(QStringLiteral("second"));
    sheet->setWidget(first);
    sheet->setWidget(second);
    QCOMPARE(sheet->layout()->count(), 1);
    QCOMPARE(sheet->layout()->itemAt(0)->widget(), second);
    QCOMPARE(first->parentWidget(), sheet);

    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(sheet);
    QVERIFY(accessible);
    QCOMPARE(accessible->role(), QAccessible::Dialog);
}

QTEST_MAIN(KovaSheetTest)
#include "kova-sheet-test.moc"
