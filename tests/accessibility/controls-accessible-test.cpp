// SPDX-License-Identifier: MIT

#include "support/test-host.h"

#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-combo-box.h>
#include <kovakit-qt/widgets/kova-icon-button.h>
#include <kovakit-qt/widgets/kova-line-edit.h>
#include <kovakit-qt/widgets/kova-menu.h>

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

namespace {

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QStringList actionsOf(QObject *object)
{
    return interfaceOf(object)->actionInterface()->actionNames();
}

void act(QAccessibleInterface *thing, const QString &action)
{
    thing->actionInterface()->doAction(action);
}

} // namespace

// What assistive technology is told of buttons, menus, combo boxes and fields, and what it can do
// with them.
class ControlsAccessibleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void buttonsArePressed();
    void menusOpenAndClose();
    void entriesAreChosen();
    void errorsAreDescribed();
};

void ControlsAccessibleTest::buttonsArePressed()
{
    KovaIconButton icon("bt_add");
    icon.setToolTip("<b>Add</b> a folder");
    KovaButton text("&Save", KovaButton::Apply);
    text.setToolTip("<i>Keeps</i> it");
    QCOMPARE(interfaceOf(&icon)->text(QAccessible::Name), "Add a folder");
    QCOMPARE(interfaceOf(&icon)->text(QAccessible::Description), "");
    QCOMPARE(interfaceOf(&text)->text(QAccessible::Name), "Save");
    QCOMPARE(interfaceOf(&text)->text(QAccessible::Description), "Keeps it");
    icon.setCheckable(true);
    const QString press = QAccessibleActionInterface::pressAction();
    for (QAbstractButton *button : std::initializer_list<QAbstractButton *>{&icon, &text}) {
        QSignalSpy clicked(button, &QAbstractButton::clicked);
        act(interfaceOf(button), press);
        QVERIFY2(clicked.isEmpty(), "whoever asked would wait for all that a click begins");
        QTRY_COMPARE(clicked.size(), 1);
        button->show();
        button->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(button));
        button->clearFocus();
        act(interfaceOf(button), QAccessibleActionInterface::setFocusAction());
        QVERIFY(button->hasFocus());
        button->setEnabled(false);
        QVERIFY(!actionsOf(button).contains(press));
        act(interfaceOf(button), press);
        QCoreApplication::processEvents();
        QCOMPARE(clicked.size(), 1);
    }
    QVERIFY(interfaceOf(&icon)->state().checked);
}

void ControlsAccessibleTest::menusOpenAndClose()
{
    KovaIconButton button("bt_more");
    QMenu plain;
    KovaMenu house;
    button.show();
    for (QMenu *menu : std::initializer_list<QMenu *>{&plain, &house}) {
        menu->addAction("&One");
        menu->addSeparator();
        QMenu *below = menu->addMenu("More");
        below->addAction("Below");
        button.setMenu(menu);
        QCOMPARE(interfaceOf(&button)->role(), QAccessible::ButtonMenu);
        for (const QString &action : {QAccessibleActionInterface::showMenuAction(),
                                      QAccessibleActionInterface::pressAction()}) {
            QSignalSpy triggered(menu, &QMenu::triggered);
            bool wasOpen = false;
            QString name;
            // The menu has an event loop of its own, which ends when the menu closes.
            QTimer::singleShot(50, menu, [&] {
                wasOpen = menu->isVisible() && interfaceOf(&button)->state().expanded;
                QAccessibleInterface *one = interfaceOf(menu)->child(0);
                name = one->text(QAccessible::Name);
                act(one, QAccessibleActionInterface::pressAction());
                QTimer::singleShot(2000, menu, &QWidget::close);
            });
            act(interfaceOf(&button), action);
            QTRY_COMPARE_WITH_TIMEOUT(triggered.size(), 1, 1500);
            QVERIFY(wasOpen);
            QCOMPARE(name, "One");
            QVERIFY(!menu->isVisible());
            QVERIFY(interfaceOf(&button)->state().collapsed);
        }
    }
}

void ControlsAccessibleTest::entriesAreChosen()
{
    KovaComboBox box;
    box.addItems({"Every day", "Every week", "Never"});
    box.show();
    QSignalSpy activated(&box, QOverload<int>::of(&QComboBox::activated));
    QAccessibleInterface *list = interfaceOf(box.view());
    act(list->child(2), QAccessibleActionInterface::toggleAction());
    QTRY_COMPARE(box.currentText(), "Never");
    QCOMPARE(activated.size(), 1);
    // A pointer over the open list chooses nothing.
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(0, 0));
    QCoreApplication::processEvents();
    QCOMPARE(box.currentText(), "Never");
    act(list->child(1), QAccessibleActionInterface::toggleAction());
    QTRY_COMPARE(box.currentText(), "Every week");
    QVERIFY(!box.view()->isVisible());
}

void ControlsAccessibleTest::errorsAreDescribed()
{
    KovaLineEdit field;
    field.resize(200, field.sizeHint().height());
    field.show();
    const auto description = [&field] { return field.getLineEdit()->accessibleDescription(); };
    const int height = field.sizeHint().height();
    field.getLineEdit()->setAccessibleDescription("of the server");
    field.setError("Enter a number from 1 to 65535, without blanks.");
    QCOMPARE(description(), "⚠ Enter a number from 1 to 65535, without blanks. of the server");
    auto *reason = field.findChildren<QLabel *>().constLast();
    QVERIFY(reason->isVisible());
    QCoreApplication::processEvents();
    field.adjustSize();
    QCoreApplication::processEvents();
    QVERIFY(field.sizeHint().height() > height);
    QVERIFY(reason->geometry().top() > field.getLineEdit()->geometry().bottom());
    QVERIFY(field.rect().contains(reason->geometry()));
    QVERIFY(reason->height() >= reason->heightForWidth(reason->width()));
    field.getLineEdit()->setAccessibleDescription("of the mail server");
    field.setError(true);
    QCOMPARE(description(), "⚠ of the mail server");
    QVERIFY(reason->isHidden());
    field.setError(QString());
    QCOMPARE(description(), "of the mail server");
    QCOMPARE(field.getLineEdit()->property("error"), QVariant(false));
    QCoreApplication::processEvents();
    QCOMPARE(field.sizeHint().height(), height);
}

QTEST_MAIN(ControlsAccessibleTest)
#include "controls-accessible-test.moc"
