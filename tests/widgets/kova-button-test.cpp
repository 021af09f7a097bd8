// SPDX-License-Identifier: MIT

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
    void iconFollowsTheEnabledState();
    void iconSizeIsThatOfTheScreen();
    void namedImageGivesAllStates();
    void initializeGivesTheHouseLookBack();
    void missingImagesGiveNoIcon();
    void filtersSwallowMouseEvents();
};

void KovaButtonTest::looksFollowTheType()
{
    const char *const keys[] = {"apply_button",         "cancel_button",
                                "select_paging_button", "nonselect_paging_button",
                                "default_button",       "red_button"};
    for (int type = KovaButton::Apply; type <= KovaButton::Red; ++type) {
        const KovaButton button("Save", type);
        QCOMPARE(button.styleSheet(), getStyleSheet(QString("component.") + keys[type], false));
        QVERIFY(button.isFlat());
        QCOMPARE(button.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    }
    QCOMPARE(KovaButton("Save", -1).styleSheet() + KovaButton("Save", 6).styleSheet(), "");
    QCOMPARE(KovaCheckBox("", nullptr).styleSheet(), getStyleSheet("component.checkbox", false));
    QCOMPARE(KovaRadioButton("", nullptr).styleSheet(),
             getStyleSheet("component.radio_button", false));
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
    for (const bool focused : {false, true}) {
        if (focused)
            window.button.setFocus();
        window.point(outside);
        window.point(inside);
        QCOMPARE(window.color(), QColor(Qt::green));
        window.point(outside);
        QCOMPARE(window.color(), QColor(focused ? Qt::green : Qt::black));
    }
}

void KovaButtonTest::iconFollowsTheEnabledState()
{
    ButtonWindow window;
    window.button.setEnabled(false);
    showActive(&window);
    QCOMPARE(window.color(), QColor(Qt::gray));
    window.point(inside);
    QCOMPARE(window.color(), QColor(Qt::gray));
    // The state of an ancestor counts as much as its own.
    window.button.setEnabled(true);
    QCOMPARE(window.color(), QColor(Qt::black));
    window.setEnabled(false);
    QCOMPARE(window.color(), QColor(Qt::gray));
    // A new default icon takes the place of all, at once.
    window.button.setDefaultIcon(filled(Qt::red));
    QCOMPARE(window.color(), QColor(Qt::red));
    for (const bool enabled : {true, false}) {
        window.setEnabled(enabled);
        QCOMPARE(window.color(), QColor(Qt::red));
    }
}

void KovaButtonTest::iconSizeIsThatOfTheScreen()
{
    // Pictures have the pixels of the device; halves round away from zero.
    const bool isSharp = qgetenv("QT_SCALE_FACTOR") == "2";
    KovaIconButton button(filled(Qt::red, {25, 27}));
    button.show();
    QCOMPARE(button.iconSize(), isSharp ? QSize(13, 14) : QSize(25, 27));
}

void KovaButtonTest::namedImageGivesAllStates()
{
    const QString name = "bt_pagebar_next";
    ButtonWindow window;
    window.button.setFocusPolicy(Qt::NoFocus);
    window.button.setAllIcon(name);
    // As the icon without a window has it: in pixels.
    const auto shows = [&](ImageManager::ImageType type) {
        QImage image = getGlobalImage(name, type).toImage();
        image.setDevicePixelRatio(1);
        return window.button.icon().pixmap(image.size()).toImage() == image;
    };
    showActive(&window);
    window.point(outside);
    QVERIFY(shows(ImageManager::Default));
    QCOMPARE(window.button.iconSize(), QSize(kovaPxRounded(16), kovaPxRounded(16)));
    window.point(inside);
    QVERIFY(shows(ImageManager::Hover));
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, inside);
    QVERIFY(shows(ImageManager::Click));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, inside);
    window.setEnabled(false);
    QVERIFY(shows(ImageManager::Disable));
}

void KovaButtonTest::initializeGivesTheHouseLookBack()
{
    KovaIconButton button(filled(Qt::red));
    const QString style = button.styleSheet();
    button.setToolButtonStyle(Qt::ToolButtonTextOnly);
    button.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    button.setPopupMode(QToolButton::DelayedPopup);
    button.setStyleSheet(QString());
    button.initialize();
    QCOMPARE(button.toolButtonStyle(), Qt::ToolButtonIconOnly);
    QCOMPARE(button.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    QCOMPARE(button.popupMode(), QToolButton::InstantPopup);
    QCOMPARE(button.styleSheet(), getStyleSheet("component.icon_button", false));
    QCOMPARE(style, button.styleSheet());
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

void KovaButtonTest::filtersSwallowMouseEvents()
{
    QPushButton button;
    QSignalSpy presses(&button, &QPushButton::pressed);
    QSignalSpy clicks(&button, &QPushButton::clicked);
    showActive(&button);
    MouseReleaseFilter releaseFilter;
    button.installEventFilter(&releaseFilter);
    click(&button);
    QCOMPARE(presses.count(), 1);
    QVERIFY(button.isDown());
    button.setDown(false);
    MouseButtonFilter buttonFilter;
    button.installEventFilter(&buttonFilter);
    QTest::mouseDClick(button.windowHandle(), Qt::LeftButton);
    QCOMPARE(presses.count(), 1);
    press(&button, Qt::Key_Space); // keys pass
    QCOMPARE(clicks.count(), 1);
}

QTEST_MAIN(KovaButtonTest)
#include "kova-button-test.moc"
