#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>

namespace {

constexpr QPoint inside(60, 50);
constexpr QPoint outside(150, 80);

QPixmap filled(Qt::GlobalColor color, const QSize &size = {20, 20})
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

// An icon button in a window, with pictures of one colour each.
class ButtonWindow : public QWidget
{
public:
    ButtonWindow()
    {
        resize(200, 100);
        button.setParent(this);
        button.setGeometry(50, 30, 40, 40);
        button.setHoverIcon(filled(Qt::green));
        button.setPressIcon(filled(Qt::blue));
        button.setDisableIcon(filled(Qt::gray));
    }

    void point(const QPoint &at) { QTest::mouseMove(windowHandle(), at); }

    // In the middle of the icon that shows now.
    QColor color() const { return button.icon().pixmap(20, 20).toImage().pixelColor(10, 10); }

    KovaIconButton button{filled(Qt::black)};
};

} // namespace

class KovaButtonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void looksFollowTheType();
    void iconFollowsThePointer();
    void focusedButtonKeepsTheHoverIcon();
    void iconFollowsTheEnabledState();
    void defaultIconReplacesTheOthers();
    void namedImageGivesAllStates();
    void missingImagesGiveNoIcon();
};

void KovaButtonTest::looksFollowTheType()
{
    const QMap<int, const char *> keys = {{-1, nullptr},
                                          {0, "apply_button"},
                                          {1, "cancel_button"},
                                          {2, "select_paging_button"},
                                          {3, "nonselect_paging_button"},
                                          {4, "default_button"},
                                          {5, "red_button"},
                                          {6, nullptr}};
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        const KovaButton button("Save", it.key());
        QCOMPARE(button.styleSheet(),
                 it.value() ? getStyleSheet(QString("component.") + it.value(), false) : "");
        QVERIFY(button.isFlat());
        QCOMPARE(button.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    }
    const KovaCheckBox check("&Remember me", nullptr);
    const KovaRadioButton radio("&Daily", nullptr);
    QCOMPARE(check.styleSheet(), getStyleSheet("component.checkbox", false));
    QCOMPARE(radio.styleSheet(), getStyleSheet("component.radio_button", false));
}

void KovaButtonTest::iconFollowsThePointer()
{
    ButtonWindow window;
    window.button.setFocusPolicy(Qt::NoFocus);
    showActive(&window);
    window.point(outside);
    QCOMPARE(window.color(), QColor(Qt::black));
    window.point(inside);
    QCOMPARE(window.color(), QColor(Qt::green));
    QTest::mousePress(window.windowHandle(), Qt::RightButton, {}, inside);
    QCOMPARE(window.color(), QColor(Qt::blue));
    QTest::mouseRelease(window.windowHandle(), Qt::RightButton, {}, inside);
    // At rest although the pointer is still inside.
    QCOMPARE(window.color(), QColor(Qt::black));

    QSignalSpy clicks(&window.button, &KovaIconButton::clicked);
    click(&window.button);
    QCOMPARE(clicks.count(), 1);
    window.point(outside);
    window.point(inside);
    QCOMPARE(window.color(), QColor(Qt::green));
    window.point(outside);
    QCOMPARE(window.color(), QColor(Qt::black));
}

void KovaButtonTest::focusedButtonKeepsTheHoverIcon()
{
    ButtonWindow window;
    showActive(&window);
    window.button.setFocus();
    // A move to where the pointer was in the window before would not be one.
    for (const QPoint &at : {outside + QPoint(1, 1), inside, outside})
        window.point(at);
    QCOMPARE(window.color(), QColor(Qt::green));
}

void KovaButtonTest::iconFollowsTheEnabledState()
{
    ButtonWindow window;
    window.button.setEnabled(false);
    showActive(&window);
    QCOMPARE(window.color(), QColor(Qt::gray));
    QCOMPARE(window.button.iconSize(), QSize(20, 20));
    window.point(inside);
    QCOMPARE(window.color(), QColor(Qt::gray));
    // The state of an ancestor counts as much as its own.
    window.button.setEnabled(true);
    QCOMPARE(window.color(), QColor(Qt::black));
    window.setEnabled(false);
    QCOMPARE(window.color(), QColor(Qt::gray));
}

void KovaButtonTest::defaultIconReplacesTheOthers()
{
    ButtonWindow window;
    window.button.setDefaultIcon(filled(Qt::red, {30, 24}));
    QCOMPARE(window.color(), QColor(Qt::red));
    window.button.setEnabled(false);
    QCOMPARE(window.color(), QColor(Qt::red));
    QCOMPARE(window.button.iconSize(), QSize(30, 24));
}

void KovaButtonTest::namedImageGivesAllStates()
{
    const QString name = "bt_pagebar_next";
    KovaIconButton button(name);
    const auto shows = [&](ImageManager::ImageType type) {
        const QPixmap expected = getGlobalImage(name, type);
        return button.icon().pixmap(expected.size()).toImage() == expected.toImage();
    };
    QVERIFY(shows(ImageManager::Default));
    button.setEnabled(false);
    QVERIFY(shows(ImageManager::Disable));
    QVERIFY(!shows(ImageManager::Default));
}

void KovaButtonTest::missingImagesGiveNoIcon()
{
    WarningCatcher warnings;
    KovaIconButton button(QString("no such image"));
    QCOMPARE(warnings.take().value(0), "Cannot load pixmap \"no such image\"");
    button.show();
    button.setEnabled(false);
    QCOMPARE(button.iconSize(), QSize(0, 0));
}

QTEST_MAIN(KovaButtonTest)
#include "kova-button-test.moc"
