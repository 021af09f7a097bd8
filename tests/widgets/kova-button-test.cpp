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
    void iconSizeIsThatOfTheScreen();
    void namedImageGivesAllStates();
    void initializeGivesTheHouseLook();
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
    QCOMPARE(window.button.iconSize(), QSize(20, 20) / DPIinfo::getInstance()->getDPR());
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
}

void KovaButtonTest::iconSizeIsThatOfTheScreen()
{
    // Pictures have the pixels of the device; halves round away from zero.
    const bool isSharp = qgetenv("QT_SCALE_FACTOR") == "2";
    const QVector<std::pair<QSize, QSize>> sizes = {{{48, 32}, {24, 16}}, {{25, 27}, {13, 14}}};
    for (const auto &[pixels, sharpSize] : sizes) {
        KovaIconButton button(filled(Qt::red, pixels));
        QVERIFY(button.iconSize() != sharpSize);
        button.show();
        QCOMPARE(button.iconSize(), isSharp ? sharpSize : pixels);
    }
}

void KovaButtonTest::namedImageGivesAllStates()
{
    const QString name = "bt_pagebar_next";
    ButtonWindow window;
    window.button.setFocusPolicy(Qt::NoFocus);
    window.button.setAllIcon(name);
    const auto shown = [&window, &name]() {
        const QSize size = getGlobalImage(name, ImageManager::Default).size();
        return window.button.icon().pixmap(size).toImage();
    };
    const auto expected = [&name](ImageManager::ImageType type) {
        QImage image = getGlobalImage(name, type).toImage();
        image.setDevicePixelRatio(1); // as the icon without a window has it
        return image;
    };
    showActive(&window);
    window.point(outside);
    QCOMPARE(shown(), expected(ImageManager::Default));
    QCOMPARE(window.button.iconSize(), QSize(kovaPxRounded(16), kovaPxRounded(16)));
    window.point(inside);
    QCOMPARE(shown(), expected(ImageManager::Hover));
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, inside);
    QCOMPARE(shown(), expected(ImageManager::Click));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, inside);
    window.setEnabled(false);
    QCOMPARE(shown(), expected(ImageManager::Disable));
}

void KovaButtonTest::initializeGivesTheHouseLook()
{
    for (const bool again : {false, true}) {
        KovaIconButton button(filled(Qt::red));
        if (again) {
            button.setToolButtonStyle(Qt::ToolButtonTextOnly);
            button.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
            button.setPopupMode(QToolButton::DelayedPopup);
            button.setStyleSheet(QString());
            button.initialize();
        }
        QCOMPARE(button.toolButtonStyle(), Qt::ToolButtonIconOnly);
        QCOMPARE(button.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
        QCOMPARE(button.popupMode(), QToolButton::InstantPopup);
        QCOMPARE(button.styleSheet(), getStyleSheet("component.icon_button", false));
    }
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
