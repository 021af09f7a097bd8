// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/calendar.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>

namespace {

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

// What is below @p around, as somebody meets it who walks through the tree.
QAccessibleInterface *find(QAccessibleInterface *around, const QString &name)
{
    for (int i = 0; i < around->childCount(); ++i) {
        QAccessibleInterface *child = around->child(i);
        if (child->text(QAccessible::Name) == name && !child->state().invisible)
            return child;
        if (QAccessibleInterface *found = find(child, name))
            return found;
    }
    return nullptr;
}

} // namespace

class KovaCalanderAccessibleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();
    void daysAreTheirDates();
    void daysAreChosen();
    void keysGoToThePartThatIsMeant();
    void pageIsTurned();
    void fieldHasACaptionAndADate();

private:
    QAccessibleInterface *part(const QString &name) { return find(interfaceOf(m_view), name); }
    void act(const QString &name, const QString &action);

    QWidget *m_window = nullptr;
    KovaCalanderView *m_view = nullptr;
    QList<QDate> m_chosen;
};

void KovaCalanderAccessibleTest::init()
{
    m_window = new QWidget;
    m_window->setLocale(QLocale("de_DE"));
    m_view = new KovaCalanderView(m_window);
    (new QVBoxLayout(m_window))->addWidget(m_view);
    m_chosen.clear();
    connect(m_view, &KovaCalanderView::sigDateSelect, this,
            [this](const QDate &date) { m_chosen.append(date); });
    showActive(m_window);
    m_view->setSelectedDate(QDate(2024, 3, 13));
}

void KovaCalanderAccessibleTest::cleanup()
{
    delete m_window;
}

void KovaCalanderAccessibleTest::act(const QString &name, const QString &action)
{
    QAccessibleInterface *found = part(name);
    QVERIFY2(found && found->actionInterface()->actionNames().contains(action), qPrintable(name));
    found->actionInterface()->doAction(action);
    QCoreApplication::processEvents();
}

void KovaCalanderAccessibleTest::daysAreTheirDates()
{
    QCOMPARE(interfaceOf(m_view)->role(), QAccessible::Grouping);
    for (const char *page : {"March 2024", "September 2024"}) {
        QAccessibleInterface *table = part(page);
        QVERIFY2(table && table->role() == QAccessible::Table, page);
        for (int i = 0; i < table->childCount(); ++i) {
            QCOMPARE(table->indexOfChild(table->child(i)), i);
            QCOMPARE(table->child(i)->parent(), table);
        }
        for (int row = 0; row < 6; ++row) {
            for (int column = 0; column < 7; ++column) {
                QAccessibleInterface *cell = table->tableInterface()->cellAt(row, column);
                QAccessibleTableCellInterface *place = cell->tableCellInterface();
                QCOMPARE(place->rowIndex() * 7 + place->columnIndex(), row * 7 + column);
                QVERIFY(
                    cell->text(QAccessible::Name)
                        .startsWith(place->columnHeaderCells().first()->text(QAccessible::Name)));
                QCOMPARE(table->childAt(cell->rect().center().x(), cell->rect().center().y()),
                         cell);
            }
        }
        m_view->setCurrentPage(2024, 9);
    }
    QVERIFY(!part("Mittwoch, 13. März 2024"));
    m_view->setCurrentPage(QDate::currentDate().year(), QDate::currentDate().month());
    QAccessibleInterface *today =
        part(m_view->locale().toString(QDate::currentDate(), QLocale::LongFormat));
    QCOMPARE(today->text(QAccessible::Description), "Today");
}

void KovaCalanderAccessibleTest::daysAreChosen()
{
    m_view->setMaximumDate(QDate(2024, 4, 2));
    QVERIFY(part("Mittwoch, 13. März 2024")->state().selected);
    QVERIFY(!part("Montag, 1. April 2024")->state().selected);
    const QAccessibleInterface *outOfRange = part("Mittwoch, 3. April 2024");
    QVERIFY(outOfRange->state().disabled && !outOfRange->state().focusable);
    QVERIFY(part("Mittwoch, 3. April 2024")->actionInterface()->actionNames().isEmpty());

    act("Montag, 1. April 2024", QAccessibleActionInterface::pressAction());
    QCOMPARE(m_chosen, {QDate(2024, 4, 1)});
    QCOMPARE(part("April 2024")->tableInterface()->selectedCells(),
             {part("Montag, 1. April 2024")});

    // The host may delete the calendar in answer.
    connect(m_view, &KovaCalanderView::sigDateSelect, this, [this] { delete m_view; });
    act("Dienstag, 2. April 2024", QAccessibleActionInterface::pressAction());
    QCOMPARE(m_chosen.last(), QDate(2024, 4, 2));
}

void KovaCalanderAccessibleTest::keysGoToThePartThatIsMeant()
{
    m_view->setFocus();
    press(m_window, {Qt::Key_PageDown, Qt::Key_Left});
    QVERIFY(part("Freitag, 12. April 2024")->state().focused);
    QVERIFY(!part("Freitag, 12. April 2024")->state().selected);
    act("Samstag, 4. Mai 2024", QAccessibleActionInterface::setFocusAction());
    QCOMPARE(part("May 2024")->focusChild(), part("Samstag, 4. Mai 2024"));
    for (int key : {Qt::Key_Up, Qt::Key_2}) {
        act("Year", QAccessibleActionInterface::setFocusAction());
        press(m_window, key);
        QCOMPARE(part("Year")->object(), calendarPart<QSpinBox>(m_view, "yearedit"));
        QCOMPARE(spoken(m_window->focusWidget(), QAccessible::Value),
                 key == Qt::Key_2 ? "2" : "2025");
        press(m_window, Qt::Key_Escape);
    }
}

void KovaCalanderAccessibleTest::pageIsTurned()
{
    QAccessibleInterface *year = part("Year");
    QCOMPARE(year->textInterface()->text(0, 4), "2024");
    year->valueInterface()->setCurrentValue(2031);
    QCOMPARE(year->valueInterface()->currentValue(), 2031);
    act("Year", QAccessibleActionInterface::increaseAction());
    QCOMPARE(calendarPage(m_view), QDate(2032, 3, 1));

    // The menu runs until an entry of it is pressed.
    QMenu *menu = calendarPart(m_view, "monthbutton")->menu();
    QAccessibleInterface *month = part("March");
    month->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    const auto pressJune = [&] {
        QVERIFY(menu->isVisible());
        QAccessibleInterface *program = interfaceOf(qApp);
        QCOMPARE(interfaceOf(menu)->parent(), program);
        QCOMPARE(program->child(program->indexOfChild(interfaceOf(menu))), interfaceOf(menu));
        QAccessibleInterface *june = find(program, "June");
        june->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    QMetaObject::invokeMethod(menu, pressJune, Qt::QueuedConnection);
    QTimer::singleShot(5000, menu, &QMenu::hide);
    QCoreApplication::processEvents();
    QVERIFY(!menu->isVisible());
    QTRY_COMPARE(calendarPage(m_view), QDate(2032, 6, 1));
}

void KovaCalanderAccessibleTest::fieldHasACaptionAndADate()
{
    auto *field = new KovaDateSelector("Any day", m_window);
    field->setAccessibleName("From");
    field->show();
    QAccessibleInterface *spokenField = find(interfaceOf(m_window), "From");
    const auto text = [&] { return spokenField->textInterface()->text(0, 99); };
    QCOMPARE(text(), "Any day");
    spokenField->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QVERIFY(spokenField->state().expanded);
    QAccessibleInterface *calendar = find(spokenField, "Calendar");
    QCOMPARE(calendar->parent(), spokenField);
    const QDate date = calendarPage(field->view());
    QAccessibleInterface *day = find(calendar, field->locale().toString(date, QLocale::LongFormat));
    day->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(text(), date.toString(Qt::ISODate));
    QVERIFY(!spokenField->state().expanded);
}

QTEST_MAIN(KovaCalanderAccessibleTest)
#include "kova-calander-accessible-test.moc"
