#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QtTest>
#include <QtWidgets>

namespace {

int scaled(int designPixels)
{
    return designPixels * qEnvironmentVariableIntValue("QT_FONT_DPI") / 96;
}

} // namespace

class KovaFootbarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void keepsItsGroupsApart();
    void leavesOutWhatIsGone();
};

void KovaFootbarTest::keepsItsGroupsApart()
{
    KovaFootbar bar;
    QWidget *left[] = {new KovaButton(QStringLiteral("Help"), KovaButton::Standard),
                       new QLabel(QStringLiteral("3 files"))};
    QWidget *right[] = {new KovaButton(QStringLiteral("OK"), KovaButton::Apply),
                        new KovaButton(QStringLiteral("Cancel"), KovaButton::Cancel)};
    for (QWidget *widget : left)
        bar.pushLeftWidget(widget);
    for (QWidget *widget : right)
        bar.pushRightWidget(widget);
    QVERIFY(bar.findChildren<QWidget *>().isEmpty());
    bar.init();
    bar.resize(scaled(600), bar.sizeHint().height());
    bar.show();

    QCOMPARE(left[0]->x(), scaled(20));
    QCOMPARE(left[1]->x(), left[0]->geometry().right() + 1 + scaled(10));
    QCOMPARE(right[1]->geometry().right() + 1, bar.width() - scaled(20));
    QCOMPARE(right[0]->geometry().right() + 1 + scaled(10), right[1]->x());
    QCOMPARE(right[0]->y(), scaled(8));
    QCOMPARE(left[0]->geometry().center().y(), left[1]->geometry().center().y());

    bar.setMargins(1, 2, 3, 4);
    bar.setSpacing(5);
    QCOMPARE(bar.layout()->contentsMargins(), QMargins(scaled(1), scaled(2), scaled(3), scaled(4)));
    QCOMPARE(bar.layout()->spacing(), scaled(5));
}

void KovaFootbarTest::leavesOutWhatIsGone()
{
    KovaFootbar bar;
    auto *gone = new QWidget;
    auto *ok = new KovaButton(QStringLiteral("OK"), KovaButton::Apply);
    bar.pushRightWidget(gone);
    bar.pushRightWidget(ok);
    delete gone;
    bar.init();
    bar.resize(scaled(400), bar.sizeHint().height());
    bar.show();
    QCOMPARE(ok->geometry().right() + 1, bar.width() - scaled(20));
}

QTEST_MAIN(KovaFootbarTest)
#include "kova-footbar-test.moc"
