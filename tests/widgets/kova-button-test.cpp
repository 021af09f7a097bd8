// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"
#include "support/warning-catcher.h"

#include <QtTest>

namespace {

const QString name = "bt_pagebar_next";
constexpr QPoint inside(60, 50);
constexpr QPoint outside(150, 80);

QPixmap filled(Qt::GlobalColor color, const QSize &size = {20, 20})
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

// An icon button in a window that is given an image by name, or its picture for each state.
class ButtonWindow : public QWidget
{
public:
    explicit ButtonWindow(bool isNamed)
    {
        resize(200, 100);
        button.setParent(this);
        button.setGeometry(50, 30, 40, 40);
        button.setFocusPolicy(Qt::NoFocus);
        for (int state = ImageManager::Default; state <= ImageManager::Disable; ++state)
            pictures.append(getGlobalImage(name, ImageManager::ImageType(state)));
        if (isNamed) {
            button.setAllIcon(name);
        } else {
            button.setDefaultIcon(pictures[ImageManager::Default]);
            button.setHoverIcon(pictures[ImageManager::Hover]);
            button.setPressIcon(pictures[ImageManager::Click]);
            button.setDisableIcon(pictures[ImageManager::Disable]);
        }
    }

    void point(const QPoint &at) { QTest::mouseMove(windowHandle(), at); }

    // The state whose picture shows now.
    int state() const
    {
        const auto shows = [this](const QPixmap &picture) {
            // As the icon without a window has it: in pixels.
            QImage image = picture.toImage();
            image.setDevicePixelRatio(1);
            return button.icon().pixmap(image.size()).toImage() == image;
        };
        return int(std::find_if(pictures.begin(), pictures.end(), shows) - pictures.begin());
    }

    QVector<QPixmap> pictures;
    KovaIconButton button{QPixmap()};
};

} // namespace

// Buttons with a text and with an icon, and the filters that keep the mouse from any widget.
class KovaButtonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void looksFollowTheType();
    void iconFollowsThePointerAndTheState_data();
    void iconFollowsThePointerAndTheState();
    void iconSizeIsThatOfThePicture();
    void filtersSwallowMouseEvents();
};

void KovaButtonTest::looksFollowTheType()
{
    const char *const keys[] = {"apply_button",         "cancel_button",
                                "select_paging_button", "nonselect_paging_button",
                                "default_button",       "red_button"};
    for (int type = KovaButton::Apply; type <= KovaButton::Red; ++type) {
        const KovaButton button("Save", type);
        const QString style = getStyleSheet(QString("component.") + keys[type], false);
        QVERIFY2(button.styleSheet() == style && button.isFlat(), keys[type]);
        QCOMPARE(button.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    }
    QCOMPARE(KovaButton("Save", -1).styleSheet() + KovaButton("Save", 6).styleSheet(), "");
    QCOMPARE(KovaCheckBox("", nullptr).styleSheet(), getStyleSheet("component.checkbox", false));
    QCOMPARE(KovaRadioButton("", nullptr).styleSheet(),
             getStyleSheet("component.radio_button", false));

    KovaIconButton icon(filled(Qt::red));
    for (const char *when : {"when new", "given back"}) {
        QVERIFY2(icon.styleSheet() == getStyleSheet("component.icon_button", false), when);
        QVERIFY2(icon.toolButtonStyle() == Qt::ToolButtonIconOnly, when);
        QVERIFY2(icon.sizePolicy() == QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed), when);
        QVERIFY2(icon.popupMode() == QToolButton::InstantPopup, when);
        icon.setStyleSheet(QString());
        icon.initialize();
    }
}

void KovaButtonTest::iconFollowsThePointerAndTheState_data()
{
    QTest::addColumn<bool>("isNamed");
    QTest::newRow("each picture") << false;
    QTest::newRow("a name") << true;
}

void KovaButtonTest::iconFollowsThePointerAndTheState()
{
    QFETCH(bool, isNamed);
    ButtonWindow window(isNamed);
    QSignalSpy clicks(&window.button, &KovaIconButton::clicked);
    showActive(&window);
    const auto leave = [&] { window.point(outside); };
    const auto enter = [&] { window.point(inside); };
    const auto hold = [&] {
        QTest::mousePress(window.windowHandle(), Qt::RightButton, {}, inside);
    };
    const auto letGo = [&] {
        QTest::mouseRelease(window.windowHandle(), Qt::RightButton, {}, inside);
    };
    const std::tuple<const char *, std::function<void()>, int> steps[] = {
        {"left", leave, ImageManager::Default},
        {"entered", enter, ImageManager::Hover},
        {"pressed", hold, ImageManager::Click},
        {"at rest although the pointer is still inside", letGo, ImageManager::Default},
        {"clicked", [&] { click(&window.button); }, ImageManager::Default},
        {"left again", leave, ImageManager::Default},
        {"entered again", enter, ImageManager::Hover},
        {"left without the focus", leave, ImageManager::Default},
        {"focused", [&] { window.button.setFocus(); }, ImageManager::Default},
        {"entered with the focus", enter, ImageManager::Hover},
        {"left with the focus", leave, ImageManager::Hover},
        {"disabled", [&] { window.button.setEnabled(false); }, ImageManager::Disable},
        {"entered while disabled", enter, ImageManager::Disable},
        {"enabled", [&] { window.button.setEnabled(true); }, ImageManager::Default},
        {"disabled with its window", [&] { window.setEnabled(false); }, ImageManager::Disable},
    };
    for (const auto &[step, act, state] : steps) {
        act();
        QVERIFY2(window.state() == state, step);
    }
    QCOMPARE(clicks.count(), 1);
    // A new default icon takes the place of all, at once.
    window.pictures = {filled(Qt::red)};
    window.button.setDefaultIcon(window.pictures[0]);
    QCOMPARE(window.state(), 0);
    window.setEnabled(true);
    QCOMPARE(window.state(), 0);
}

void KovaButtonTest::iconSizeIsThatOfThePicture()
{
    // Pictures have the pixels of the device; halves round away from zero.
    const bool isSharp = qgetenv("QT_SCALE_FACTOR") == "2";
    KovaIconButton odd(filled(Qt::red, {25, 27}));
    KovaIconButton named(name);
    WarningCatcher warnings;
    KovaIconButton missing(QString("no such image"));
    QCOMPARE(warnings.take().value(0), "Cannot load pixmap \"no such image\"");
    const QPair<KovaIconButton *, QSize> buttons[] = {
        {&odd, isSharp ? QSize(13, 14) : QSize(25, 27)},
        {&named, QSize(kovaPxRounded(16), kovaPxRounded(16))},
        {&missing, QSize(0, 0)},
    };
    for (const auto &[button, size] : buttons) {
        button->show();
        button->setEnabled(false);
        QCOMPARE(button->iconSize(), size);
    }
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
