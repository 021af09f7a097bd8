#include "kova-sheet.h"

#include "message-label.h"
#include "sheet-accessible_p.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>

#include <QHBoxLayout>
#include <QPainter>

#include <functional>
#include <new>

namespace {

constexpr int designShadowMargin = 22;

// The block that operator new handed out last, until the sheet in it is constructed.
struct HeapBlock
{
    const char *begin = nullptr;
    std::size_t size = 0;
};
HeapBlock latestBlock;

bool takeHeapBlock(const void *sheet)
{
    const HeapBlock block = latestBlock;
    latestBlock = HeapBlock();
    const std::less<const char *> before;
    const char *address = static_cast<const char *>(sheet);
    return block.begin && !before(address, block.begin)
        && before(address, block.begin + block.size);
}

} // namespace

void *KovaSheet::operator new(std::size_t size)
{
    void *memory = ::operator new(size);
    latestBlock = {static_cast<const char *>(memory), size};
    return memory;
}

void KovaSheet::operator delete(void *memory)
{
    ::operator delete(memory);
}

KovaSheet::KovaSheet(QWidget *parent)
    : QFrame(parent)
    , shadowMargin(kovaPx(designShadowMargin))
    , m_onHeap(takeHeapBlock(this))
{
    installSheetAccessibility();
    setContentsMargins(shadowMargin, shadowMargin, shadowMargin, shadowMargin);
}

void KovaSheet::restoreShadowMargins()
{
    ensurePolished();
    setContentsMargins(shadowMargin, shadowMargin, shadowMargin, shadowMargin);
}

void KovaSheet::setWidget(QWidget *widget)
{
    delete layout();
    auto *box = new QHBoxLayout(this);
    box->addWidget(widget, 0, Qt::AlignCenter);
    updateGeometry();
    adjustSize();
}

void KovaSheet::fitToWidth(int width)
{
    restoreShadowMargins();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum);
    setFixedWidth(width);
    // The labels get their heights now, or else the first frame shows the sheet too low.
    layout()->activate();
    for (MessageLabel *label : findChildren<MessageLabel *>())
        label->fitHeight();
    updateGeometry();
    adjustSize();
}

void KovaSheet::showEvent(QShowEvent *event)
{
    restoreShadowMargins();
    QFrame::showEvent(event);
}

void KovaSheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawShadow(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRect(QRect(QPoint(shadowMargin, shadowMargin),
                           QPoint(width() - 1 - shadowMargin, height() - 1 - shadowMargin)));
}

void KovaSheet::drawShadow(QPainter &painter)
{
    const int m = shadowMargin;
    const int right = width() - m;
    const int bottom = height() - m;
    const int innerWidth = width() - 2 * m;
    const int innerHeight = height() - 2 * m;

    struct Part
    {
        const char *image;
        QRect target;
    };
    const Part corners[] = {
        {"bg_tutorial_lt", {0, 0, m, m}},
        {"bg_tutorial_rt", {right, 0, m, m}},
        {"bg_tutorial_lb", {0, bottom, m, m}},
        {"bg_tutorial_rb", {right, bottom, m, m}},
    };
    const Part edges[] = {
        {"bg_tutorial_l", {0, m, m, innerHeight}},
        {"bg_tutorial_r", {right, m, m, innerHeight}},
        {"bg_tutorial_t", {m, 0, innerWidth, m}},
        {"bg_tutorial_b", {m, bottom, innerWidth, m}},
    };

    for (const Part &corner : corners)
        painter.drawPixmap(corner.target, getGlobalImage(corner.image, ImageManager::Default));
    for (const Part &edge : edges) {
        const QPixmap pixmap = getGlobalImage(edge.image, ImageManager::Default);
        if (edge.target.isEmpty() || pixmap.isNull())
            continue;
        painter.drawPixmap(edge.target, pixmap.scaled(edge.target.size(), Qt::IgnoreAspectRatio,
                                                      Qt::FastTransformation));
    }
}
