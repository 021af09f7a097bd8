// SPDX-License-Identifier: MIT

#include "dates-page.h"

#include "host-startup.h"
#include "languages.h"
#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-date-selector.h>

#include <QBoxLayout>
#include <QDate>
#include <QListWidget>
#include <QLocale>

namespace {

constexpr int languageRows = 10;
constexpr int languageRowHeight = 26;

// As its speakers write it, and as short as these can be told apart.
QString languageName(const QString &code)
{
    if (code == QLatin1String("enu"))
        return QStringLiteral("English");
    if (code == QLatin1String("esn"))
        return QStringLiteral("español");
    return QLocale(localeName(code)).nativeLanguageName();
}

} // namespace

DatesPage::DatesPage()
{
    add(makePeriod());
    add(makeLanguages());
    addPopup(m_from, QStringLiteral("calendar"), [this] { m_from->showPopup(); });
    addPopup(m_to, QStringLiteral("limits"), [this] {
        m_from->dateSelect(QDate(2024, 9, 9));
        m_to->getCalendarView()->setCurrentPage(2024, 9);
        m_to->showPopup();
    });
}

Card *DatesPage::makePeriod()
{
    auto *card = new Card(tr("A period"), tr("Neither day can be chosen beyond the other one. F4, "
                                             "Space or Alt+Down open the calendar."));
    m_from = new KovaDateSelector(tr("Any day"), nullptr);
    m_to = new KovaDateSelector(tr("Any day"), nullptr);
    QLabel *from = makeRowLabel(tr("From"));
    from->setBuddy(m_from);
    m_from->setAccessibleName(from->text());
    QLabel *to = makeRowLabel(tr("To"));
    to->setBuddy(m_to);
    m_to->setAccessibleName(to->text());
    for (KovaDateSelector *field : {m_from, m_to}) {
        connect(field, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &DatesPage::limitPeriod);
    }
    auto *clear = new KovaButton(tr("Clear"), KovaButton::Standard);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_from->clearDate();
        m_to->clearDate();
        report(tr("Any day can be chosen."));
    });
    card->addRow({from, m_from, to, m_to, clear});
    m_to->dateSelect(QDate(2024, 9, 20));
    m_from->getCalendarView()->setCurrentPage(2024, 9);
    return card;
}

void DatesPage::limitPeriod()
{
    const QDate from = m_from->currentData().toDate();
    const QDate to = m_to->currentData().toDate();
    m_to->getCalendarView()->setMinimumDate(from.isValid() ? from : QDate(1, 1, 1));
    m_from->getCalendarView()->setMaximumDate(to.isValid() ? to : QDate(9999, 12, 31));
    if (from.isValid() && to.isValid())
        report(tr("%1 days").arg(from.daysTo(to) + 1));
}

Card *DatesPage::makeLanguages()
{
    auto *card = new Card(tr("The calendar in every language"),
                          tr("Choose a language: the calendar is built anew with its "
                             "names of months and weekdays."));
    auto *list = new QListWidget;
    setStyleKey(list, "gallery.languages");
    list->setAccessibleName(tr("Language"));
    list->setFlow(QListView::TopToBottom);
    list->setWrapping(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setGridSize(QSize(kovaPx(150), kovaPx(languageRowHeight)));
    list->setFixedSize(kovaPx(310), kovaPx(languageRows * languageRowHeight) + 1);
    for (const QString &code : languageCodes()) {
        auto *item = new QListWidgetItem(languageName(code), list);
        item->setData(Qt::UserRole, code);
        if (code == hostLanguage())
            list->setCurrentItem(item);
    }
    connect(list, &QListWidget::itemSelectionChanged, this, [this, list] {
        const QList<QListWidgetItem *> chosen = list->selectedItems();
        if (!chosen.isEmpty())
            showLanguage(chosen.first()->data(Qt::UserRole).toString());
    });

    m_calendarRow = new QHBoxLayout;
    m_calendarRow->setSpacing(kovaPx(14));
    m_calendarRow->addWidget(list, 0, Qt::AlignTop);
    m_calendarRow->addStretch(1);
    card->add(m_calendarRow);
    showLanguage(hostLanguage());
    return card;
}

void DatesPage::showLanguage(const QString &code)
{
    // A view keeps the texts that it was built with.
    ComponentStrings *strings = ComponentStrings::getInstance();
    strings->installStrings(stringsOfLanguage(code));
    delete m_calendar;
    m_calendar = new KovaCalanderView(this);
    strings->installStrings(stringsOfLanguage(hostLanguage()));
    m_calendar->setLocale(QLocale(localeName(code)));

    setStyleKey(m_calendar, "component.date_selector");
    m_calendar->setFixedSize(kovaPx(280), kovaPx(260));
    m_calendar->setSelectedDate(QDate(2024, 9, 17));
    m_calendarRow->insertWidget(1, m_calendar, 0, Qt::AlignTop);
    connect(m_calendar, &KovaCalanderView::sigDateSelect, this, [this](const QDate &date) {
        report(tr("The calendar chose %1.").arg(date.toString(Qt::ISODate)));
    });
}
