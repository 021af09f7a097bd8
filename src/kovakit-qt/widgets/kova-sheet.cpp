// SPDX-License-Identifier: MIT

#include "kova-sheet.h"

#include "kovakit-qt/accessibility/sheet-accessible_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/widgets/message-label.h>

#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

constexpr int designShadowMargin = 22;

struct HeapBlock
{
    const char *begin;
    std::size_t size;
};

// The blocks that operator new handed out and no sheet was constructed in yet: more than one when
// the arguments of a constructor make another sheet.
std::vector<HeapBlock> pendingBlocks;

template<typename... How>
void *makeBlock(std::size_t size, How... how)
{
    void *memory = ::operator new(size, how...);
    if (memory)
        pendingBlocks.push_back({static_cast<const char *>(memory), size});
    return memory;
}

bool takeBlockAround(const void *address)
{
    const auto surrounds = [address](const HeapBlock &block) {
        const std::less_equal<const void *> before;
        return before(block.begin, address) && !before(block.begin + block.size, address);
    };
    const auto found = std::find_if(pendingBlocks.begin(), pendingBlocks.end(), surrounds);
    if (found == pendingBlocks.end())
        return false;
    pendingBlocks.erase(found);
    return true;
}

QPixmap shadowPicture(const char *name)
{
    return getGlobalImage(name, ImageManager::Default);
}

void drawStretched(QPainter &painter, const QRect &target, const QPixmap &picture)
{
    if (!target.isEmpty() && !picture.isNull())
        painter.drawPixmap(
            target, picture.scaled(target.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation));
}

} // namespace

class KovaSheet::Private
{
public:
    [[nodiscard]] QMargins shadowMargins() const
    {
        return {shadowMargin, shadowMargin, shadowMargin, shadowMargin};
    }

    // The width of the shadow, in device pixels.
    const int shadowMargin;
    const bool isOnHeap;
};

void *KovaSheet::operator new(std::size_t size)
{
    return makeBlock(size);
}

void *KovaSheet::operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return makeBlock<const std::nothrow_t &>(size, std::nothrow);
}

void *KovaSheet::operator new(std::size_t size, std::align_val_t alignment)
{
    return makeBlock(size, alignment);
}

void *KovaSheet::operator new(std::size_t, void *place) noexcept
{
    return place;
}

// A block is still pending only if the constructor threw before it reached the sheet.
void KovaSheet::operator delete(void *memory) noexcept
{
    takeBlockAround(memory);
    ::operator delete(memory);
}

void KovaSheet::operator delete(void *memory, const std::nothrow_t &) noexcept
{
    KovaSheet::operator delete(memory);
}

void KovaSheet::operator delete(void *memory, std::align_val_t alignment) noexcept
{
    takeBlockAround(memory);
    ::operator delete(memory, alignment);
}

void KovaSheet::operator delete(void *, void *) noexcept { }

KovaSheet::KovaSheet(QWidget *parent)
    : QFrame(parent)
    , d(new Private{kovaPx(designShadowMargin), takeBlockAround(this)})
{
    installSheetAccessibility<KovaSheet, MessageLabel>();
    setContentsMargins(d->shadowMargins());
}

KovaSheet::~KovaSheet() = default;

bool KovaSheet::isOnHeap() const
{
    return d->isOnHeap;
}

void KovaSheet::setWidget(QWidget *widget)
{
    delete layout();
    auto *box = new QHBoxLayout(this);
    box->addWidget(widget, 0, Qt::AlignCenter);
    updateGeometry();
    adjustSize();
}

void KovaSheet::showEvent(QShowEvent *event)
{
    // A style that is applied to the sheet takes the margins away.
    ensurePolished();
    setContentsMargins(d->shadowMargins());
    QFrame::showEvent(event);
}

void KovaSheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawShadow(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRect(rect().marginsRemoved(d->shadowMargins()));
}

void KovaSheet::drawShadow(QPainter &painter)
{
    const int m = d->shadowMargin;
    const int right = width() - m;
    const int bottom = height() - m;
    const int innerWidth = width() - 2 * m;
    const int innerHeight = height() - 2 * m;

    // The log names missing pictures in this order.
    const QPixmap leftEdge = shadowPicture("bg_tutorial_l");
    const QPixmap rightEdge = shadowPicture("bg_tutorial_r");
    const QPixmap topEdge = shadowPicture("bg_tutorial_t");
    const QPixmap bottomEdge = shadowPicture("bg_tutorial_b");
    const QPixmap leftTop = shadowPicture("bg_tutorial_lt");
    const QPixmap rightTop = shadowPicture("bg_tutorial_rt");
    const QPixmap leftBottom = shadowPicture("bg_tutorial_lb");
    const QPixmap rightBottom = shadowPicture("bg_tutorial_rb");

    painter.drawPixmap(QRect(0, 0, m, m), leftTop);
    painter.drawPixmap(QRect(right, 0, m, m), rightTop);
    painter.drawPixmap(QRect(0, bottom, m, m), leftBottom);
    painter.drawPixmap(QRect(right, bottom, m, m), rightBottom);
    drawStretched(painter, QRect(0, m, m, innerHeight), leftEdge);
    drawStretched(painter, QRect(right, m, m, innerHeight), rightEdge);
    drawStretched(painter, QRect(m, 0, innerWidth, m), topEdge);
    drawStretched(painter, QRect(m, bottom, innerWidth, m), bottomEdge);
}
