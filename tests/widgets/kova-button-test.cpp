#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QtTest>

namespace {

QPixmap filled(Qt::GlobalColor color, const QSize &size = {20, 20})
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

// The colour in the middle of the icon that the button shows now.
QColor shownColor(const KovaIconButton &button)
{
    return button.icon().pixmap(20, 20).toImage().pixelColor(10, 10);
}

} // namespace

class KovaButtonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void looksFollowTheType();
    void checkControlsAreStyled();
    void iconFollowsThePointer();
    void focusedButtonKeepsTheHoverIcon();
    void iconFollowsTheEnabledState();
    void defaultIconReplacesTheOthers();
    void namedImageGivesAllStates();
    void missingImagesGiveNoIcon();
};

void KovaButtonTest::looksFollowTheType()
{
    const char *const keys[] = {
        "component.apply_button",         "component.cancel_button",
        "component.select_paging_button", "component.nonselect_paging_button",
        "component.default_button",       "component.red_button"};
    WarningCatcher warnings;
    for (int type = 0; type < 6; ++type) {
        const KovaButton button(QStringLiteral("Save"), type);
        QCOMPARE(button.styleSheet(), getStyleSheet(keys[type], false));
        QVERIFY(!button.styleSheet().isEmpty());
        QVERIFY(button.isFlat());
        QCOMPARE(button.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    }
    for (const int type : {-1, 6, 7}) {
        const KovaButton button(QStringLiteral("x"), type);
        QCOMPARE(button.styleSheet(), QString());
        QVERIFY(button.isFlat());
    }
    QCOMPARE(warnings.take(), QStringList());
}

void KovaButtonTest::checkControlsAreStyled()
{
    QWidget parent;
    const auto *check = new KovaCheckBox(QStringLiteral("&Remember me"), &parent);
    const auto *radio = new KovaRadioButton(QStringLiteral("&Daily"), &parent);
    QCOMPARE(check->styleSheet(), getStyleSheet("component.checkbox", false));
    QCOMPARE(radio->styleSheet(), getStyleSheet("component.radio_button", false));
    QCOMPARE(check->parent(), &parent);
    QCOMPARE(radio->text(), QStringLiteral("&Daily"));
}

void KovaButtonTest::iconFollowsThePointer()
{
    QWidget window;
    window.resize(200, 100);
    KovaIconButton button(filled(Qt::black));
    button.setParent(&window);
    button.setGeometry(50, 30, 40, 40);
    button.setFocusPolicy(Qt::NoFocus);
    button.setHoverIcon(filled(Qt::green));
    button.setPressIcon(filled(Qt::blue));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QWindow *handle = window.windowHandle();
    const QPoint inside(60, 50);
    const QPoint outside(150, 80);
    QTest::mouseMove(handle, outside);
    QCOMPARE(shownColor(button), QColor(Qt::black));
    QTest::mouseMove(handle, inside);
    QCOMPARE(shownColor(button), QColor(Qt::green));
    QTest::mousePress(handle, Qt::RightButton, {}, inside);
    QCOMPARE(shownColor(button), QColor(Qt::blue));
    QTest::mouseRelease(handle, Qt::RightButton, {}, inside);
    // At rest although the pointer is still inside.
    QCOMPARE(shownColor(button), QColor(Qt::black));

    QSignalSpy clicks(&button, &KovaIconButton::clicked);
    QTest::mouseClick(handle, Qt::LeftButton, {}, inside);
    QCOMPARE(clicks.count(), 1);
    QTest::mouseMove(handle, outside);
    QTest::mouseMove(handle, inside);
    QCOMPARE(shownColor(button), QColor(Qt::green));
    QTest::mouseMove(handle, outside);
    QCOMPARE(shownColor(button), QColor(Qt::black));
}

void KovaButtonTest::focusedButtonKeepsTheHoverIcon()
{
    QWidget window;
    KovaIconButton button(filled(Qt::black));
    button.setParent(&window);
    button.setGeometry(10, 10, 30, 30);
    button.setHoverIcon(filled(Qt::green));
    window.resize(100, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    button.setFocus();
    QTest::mouseMove(window.windowHandle(), {90, 90});
    QTest::mouseMove(window.windowHandle(), {20, 20});
    QTest::mouseMove(window.windowHandle(), {90, 90});
    QCOMPARE(shownColor(button), QColor(Qt::green));
}

void KovaButtonTest::iconFollowsTheEnabledState()
{
    QWidget window;
    KovaIconButton button(filled(Qt::black));
    button.setParent(&window);
    button.setGeometry(10, 10, 30, 30);
    button.setDisableIcon(filled(Qt::gray));
    button.setEnabled(false);
    window.resize(100, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(shownColor(button), QColor(Qt::gray));
    QCOMPARE(button.iconSize(), QSize(20, 20));
    QTest::mouseMove(window.windowHandle(), {20, 20});
    QCOMPARE(shownColor(button), QColor(Qt::gray));
    // The state of an ancestor counts as much as its own.
    button.setEnabled(true);
    QCOMPARE(shownColor(button), QColor(Qt::black));
    window.setEnabled(false);
    QCOMPARE(shownColor(button), QColor(Qt::gray));
}

void KovaButtonTest::defaultIconReplacesTheOthers()
{
    KovaIconButton button(filled(Qt::black));
    button.setDisableIcon(filled(Qt::gray));
    button.setDefaultIcon(filled(Qt::red, {16, 12}));
    QCOMPARE(shownColor(button), QColor(Qt::red));
    button.setEnabled(false);
    QCOMPARE(button.iconSize(), QSize(16, 12));
    QCOMPARE(button.icon().pixmap(16, 12).toImage().pixelColor(5, 5), QColor(Qt::red));
}

void KovaButtonTest::namedImageGivesAllStates()
{
    WarningCatcher warnings;
    const QString name = QStringLiteral("bt_pagebar_next");
    KovaIconButton button(name);
    QCOMPARE(warnings.take(), QStringList());
    const auto shows = [&](ImageManager::ImageType type) {
        const QPixmap expected = getGlobalImage(name, type);
        return button.icon().pixmap(expected.size()).toImage() == expected.toImage();
    };
    QVERIFY(shows(ImageManager::Default));
    button.setEnabled(false);
    QVERIFY(shows(ImageManager::Disable));
    QVERIFY(!shows(ImageManager::Default));
    QCOMPARE(button.popupMode(), QToolButton::InstantPopup);
}

void KovaButtonTest::missingImagesGiveNoIcon()
{
    WarningCatcher warnings;
    KovaIconButton button(QStringLiteral("no such image"));
    QCOMPARE(warnings.take().value(0), QStringLiteral("Cannot load pixmap \"no such image\""));
    button.show();
    button.setEnabled(false);
    QCOMPARE(button.iconSize(), QSize(0, 0));
}

QTEST_MAIN(KovaButtonTest)
#include "kova-button-test.moc"
