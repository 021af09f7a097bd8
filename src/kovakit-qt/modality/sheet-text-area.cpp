// SPDX-License-Identifier: MIT

#include "sheet-text-area_p.h"

#include "kovakit-qt/utils/fit-height_p.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QFocusEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>

#include <utility>

SheetTextArea::SheetTextArea(QWidget *sheet)
    : QScrollArea(sheet)
{
    // A bar asks for its style while the area is made, and would keep what it was told then.
    for (QScrollBar *bar : {verticalScrollBar(), horizontalScrollBar()})
        bar->setStyleSheet(getStyleSheet("component.scrollbar", false));
    setFrameShape(NoFrame);
    // The labels take the focus; a stop of Tab that shows nothing of its own would be in the way.
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setWidget(new QWidget);
    // Otherwise the style paints a grey square between the bars.
    setCornerWidget(new QWidget);
    for (QWidget *transparent : {viewport(), widget()})
        transparent->setAutoFillBackground(false);
    const int line = kovaPx(24);
    verticalScrollBar()->setSingleStep(line);
    horizontalScrollBar()->setSingleStep(line);
}

void SheetTextArea::setLabels(const QVector<QWidget *> &labels, int spacing)
{
    m_labels = labels;
    m_spacing = spacing;
    for (QWidget *label : labels) {
        label->setParent(widget());
        label->installEventFilter(this);
        label->show();
    }
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
}

void SheetTextArea::clearLabels()
{
    for (QWidget *label : std::exchange(m_labels, {}))
        label->removeEventFilter(this);
}

void SheetTextArea::setBars(bool vertical, bool horizontal, int widestWord)
{
    const auto policy = [](bool shown) {
        return shown ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    };
    setVerticalScrollBarPolicy(policy(vertical));
    setHorizontalScrollBarPolicy(policy(horizontal));
    m_widestWord = widestWord;
    placeLabels();
}

int SheetTextArea::barExtent() const
{
    return verticalScrollBar()->sizeHint().width();
}

bool SheetTextArea::scrollBy(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        keyPressEvent(event);
        return event->isAccepted();
    default:
        return false;
    }
}

void SheetTextArea::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    placeLabels();
}

// A text that is reached by keyboard comes into sight with its beginning.
bool SheetTextArea::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched->isWidgetType()) {
        const int top = static_cast<QWidget *>(watched)->y();
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const int shown = verticalScrollBar()->value();
        const bool tabbed = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
        if (tabbed && (top < shown || top >= shown + viewport()->height() / 2))
            verticalScrollBar()->setValue(top);
    }
    return QScrollArea::eventFilter(watched, event);
}

void SheetTextArea::placeLabels()
{
    const int width = qMax(viewport()->width(), m_widestWord);
    int bottom = 0;
    for (QWidget *label : qAsConst(m_labels)) {
        const int top = bottom > 0 ? bottom + m_spacing : 0;
        label->resize(width, label->height());
        fitHeightToWidth(label);
        label->move(0, top);
        bottom = top + label->height();
    }
    widget()->resize(width, bottom);
}
