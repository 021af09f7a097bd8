#include "kova-filter-bar.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QKeyEvent>
#include <QMenu>

#include <utility>

KovaFilterBar::KovaFilterBar(QWidget *parent)
    : QLineEdit(parent)
{
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setPlaceholderApart(this);
    // First, so that the button is not told of it later.
    setStyleSheet(getStyleSheet("component.lineedit", false)
                  + getStyleSheet("component.filter_bar_padding", false));

    m_searchButton =
        new KovaIconButton(QStringLiteral("bt_search_dropdown"),
                           getStyleSheet("component.filter_search_button", false), this);
    m_searchButton->setFocusPolicy(Qt::NoFocus);
    m_searchButton->setCursor(Qt::ArrowCursor);
    m_searchButton->setFixedSize(kovaPx(34), kovaPx(24));
    placeButton();

    setFixedHeight(kovaPx(28));
    connect(this, &QLineEdit::returnPressed, this, &KovaFilterBar::slotKeywordChange);
}

// Styles keep their padding free where the text begins.
void KovaFilterBar::placeButton()
{
    const int margin = kovaPx(4);
    const int x = isRightToLeft() ? width() - margin - m_searchButton->width() : margin;
    m_searchButton->move(x, kovaPx(2));
}

void KovaFilterBar::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    placeButton();
}

void KovaFilterBar::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        placeButton();
}

void KovaFilterBar::setMenu(QMenu *menu)
{
    if (const QMenu *former = m_searchButton->menu())
        disconnect(former->menuAction(), &QAction::changed, this, &KovaFilterBar::nameButton);
    m_searchButton->setMenu(menu);
    if (menu) {
        dropLateClicks(menu);
        connect(menu->menuAction(), &QAction::changed, this, &KovaFilterBar::nameButton);
    }
    nameButton();
}

void KovaFilterBar::nameButton()
{
    const QMenu *menu = m_searchButton->menu();
    m_searchButton->setAccessibleName(menu ? menu->title() : QString());
}

void KovaFilterBar::slotKeywordChange()
{
    // A line edit goes on after it told of Return, while the host may delete it in answer.
    if (m_isInKeyPress)
        m_isKeywordChanged = true;
    else
        Q_EMIT sigKeywordChanged(text());
}

void KovaFilterBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Down) {
        m_isInKeyPress = true;
        QLineEdit::keyPressEvent(event);
        m_isInKeyPress = false;
        if (std::exchange(m_isKeywordChanged, false))
            Q_EMIT sigKeywordChanged(text());
        return;
    }
    // Nothing of this may be touched after the menu: its loop can outlive the bar.
    m_searchButton->showMenu();
}
