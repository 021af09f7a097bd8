// SPDX-License-Identifier: MIT

#include "kova-filter-bar.h"

#include "kovakit-qt/style/placeholder-color_p.h"
#include "kovakit-qt/utils/input-guards_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-icon-button.h>

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

#include <utility>

namespace {

class SearchButton : public KovaIconButton
{
public:
    explicit SearchButton(QWidget *parent)
        : KovaIconButton(QStringLiteral("bt_search_dropdown"),
                         getStyleSheet("component.filter_search_button", false), parent)
    {
    }
};

} // namespace

class KovaFilterBar::Private
{
public:
    explicit Private(KovaFilterBar *bar)
        : q(bar)
    {
    }

    void nameButton();
    void placeButton();

    KovaFilterBar *const q;
    KovaIconButton *searchButton = nullptr;
    QMetaObject::Connection menuChanges;
    bool isInKeyPress = false;
    bool isKeywordChanged = false;
};

KovaFilterBar::KovaFilterBar(QWidget *parent)
    : QLineEdit(parent)
    , d(std::make_unique<Private>(this))
{
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setPlaceholderApart(this);
    // Before the button is made: a style text of the bar polishes all children that it has.
    setStyleSheet(getStyleSheet("component.lineedit", false)
                  + getStyleSheet("component.filter_bar_padding", false));

    d->searchButton = new SearchButton(this);
    d->searchButton->setFocusPolicy(Qt::NoFocus);
    d->searchButton->setCursor(Qt::ArrowCursor);
    d->searchButton->setFixedSize(kovaPx(34), kovaPx(24));
    d->placeButton();

    setFixedHeight(kovaPx(28));
    connect(this, &QLineEdit::returnPressed, this, &KovaFilterBar::slotKeywordChange);
}

KovaFilterBar::~KovaFilterBar()
{
    // A menu that the bar owns ends after d.
    disconnect(d->menuChanges);
}

// Styles keep their padding free where the text begins.
void KovaFilterBar::Private::placeButton()
{
    const int margin = kovaPx(4);
    const int x = q->isRightToLeft() ? q->width() - margin - searchButton->width() : margin;
    searchButton->move(x, kovaPx(2));
}

void KovaFilterBar::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    d->placeButton();
}

void KovaFilterBar::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        d->placeButton();
}

void KovaFilterBar::setMenu(QMenu *menu)
{
    disconnect(d->menuChanges);
    d->searchButton->setMenu(menu);
    if (menu) {
        dropLateClicks(menu);
        d->menuChanges =
            connect(menu->menuAction(), &QAction::changed, this, [this] { d->nameButton(); });
    }
    d->nameButton();
}

void KovaFilterBar::Private::nameButton()
{
    const QMenu *menu = searchButton->menu();
    searchButton->setAccessibleName(menu ? menu->title() : QString());
}

void KovaFilterBar::slotKeywordChange()
{
    // A line edit goes on after it told of Return, while the host may delete it in answer.
    if (d->isInKeyPress)
        d->isKeywordChanged = true;
    else
        Q_EMIT sigKeywordChanged(text());
}

void KovaFilterBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Down) {
        d->isInKeyPress = true;
        QLineEdit::keyPressEvent(event);
        d->isInKeyPress = false;
        if (std::exchange(d->isKeywordChanged, false))
            Q_EMIT sigKeywordChanged(text());
        return;
    }
    // Nothing of this may be touched after the menu: its loop can outlive the bar.
    d->searchButton->showMenu();
}
