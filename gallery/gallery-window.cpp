// SPDX-License-Identifier: MIT

#include "gallery-window.h"

#include "gallery-page.h"
#include "page-registry.h"
#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>

#include <QAccessibleWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QListWidgetItem>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <memory>
#include <utility>
#include <vector>

namespace {

// A plain widget has no role, not even as a window.
QAccessibleInterface *createAccessible(const QString &, QObject *object)
{
    auto *window = qobject_cast<GalleryWindow *>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

} // namespace

GalleryWindow::GalleryWindow(const QString &language)
    : m_list(new QListWidget)
    , m_stack(new QStackedWidget)
    , m_report(new QLabel)
{
    QAccessible::installFactory(createAccessible);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(getStyleSheet("gallery.window", false) + getStyleSheet("theme.window", false));

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeNavigation(language));
    layout->addWidget(makeContent(), 1);

    for (const PageEntry &entry : pageRegistry()) {
        m_list->addItem(GalleryPage::tr(entry.title));
        m_stack->addWidget(new QWidget);
    }
    // Not currentRowChanged(): assistive technology selects a row and leaves the current one.
    connect(m_list, &QListWidget::itemSelectionChanged, this, &GalleryWindow::showSelected);
    m_list->setCurrentRow(0);
    setMinimumSize(kovaPx(640), kovaPx(400));
}

QSize GalleryWindow::designSize()
{
    return {kovaPx(960), kovaPx(680)};
}

QWidget *GalleryWindow::makeNavigation(const QString &language)
{
    auto *column = new QFrame;
    setStyleKey(column, "gallery.navigation");
    column->setFixedWidth(kovaPx(208));
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(kovaPx(12), kovaPx(16), kovaPx(12), kovaPx(12));
    layout->setSpacing(kovaPx(10));

    auto *name = new QLabel(QStringLiteral("KovaKit"));
    setStyleKey(name, "gallery.product_name");
    name->setContentsMargins(kovaPx(10), 0, 0, 0);
    layout->addWidget(name);

    m_list->setStyleSheet(getStyleSheet("gallery.page_list", false)
                          + getStyleSheet("component.scrollbar", false));
    m_list->setAccessibleName(tr("Pages"));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(m_list, 1);

    QLabel *settings = makeRowLabel(
        tr("Scale %1, language %2").arg(DPIinfo::getInstance()->getDPI(), 0, 'g', 3).arg(language));
    settings->setContentsMargins(kovaPx(10), 0, 0, 0);
    layout->addWidget(settings);
    return column;
}

QWidget *GalleryWindow::makeContent()
{
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_stack, 1);

    setStyleKey(m_report, "gallery.report");
    m_report->setIndent(0);
    m_report->setWordWrap(true);
    m_report->setTextFormat(Qt::PlainText);
    m_report->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_report->setAccessibleDescription(tr("Report"));
    layout->addWidget(m_report);
    clearReport();
    return content;
}

QWidget *GalleryWindow::makePageFrame(int index)
{
    const PageEntry &entry = pageRegistry()[std::size_t(index)];
    auto *frame = new QWidget;
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto *heading = new QVBoxLayout;
    heading->setContentsMargins(kovaPx(24), kovaPx(16), kovaPx(24), kovaPx(8));
    heading->setSpacing(kovaPx(2));
    auto *title = new QLabel(GalleryPage::tr(entry.title));
    setStyleKey(title, "gallery.page_title");
    heading->addWidget(title);
    heading->addWidget(makeCaption(GalleryPage::tr(entry.summary)));
    layout->addLayout(heading);

    GalleryPage *page = entry.create();
    connect(page, &GalleryPage::reported, this, &GalleryWindow::showReport);
    auto *area = new QScrollArea;
    area->setStyleSheet(getStyleSheet("gallery.scroll_area", false)
                        + getStyleSheet("component.scrollbar", false));
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(page);
    // A scroll area fills both of them with the grey of the style.
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    layout->addWidget(area, 1);
    return frame;
}

void GalleryWindow::showSelected()
{
    const QList<QListWidgetItem *> chosen = m_list->selectedItems();
    if (!chosen.isEmpty()) {
        showPage(m_list->row(chosen.constFirst()));
        return;
    }
    // Not at once: assistive technology clears the selection before it selects.
    const auto select = [this] {
        if (m_list->selectedItems().isEmpty())
            m_list->setCurrentRow(m_stack->currentIndex());
    };
    QMetaObject::invokeMethod(this, select, Qt::QueuedConnection);
}

GalleryPage *GalleryWindow::showPage(int index)
{
    if (index < 0 || index >= m_stack->count())
        return nullptr;
    auto *page = m_stack->widget(index)->findChild<GalleryPage *>();
    if (!page) {
        QWidget *placeholder = m_stack->widget(index);
        m_stack->removeWidget(placeholder);
        delete placeholder;
        m_stack->insertWidget(index, makePageFrame(index));
        page = m_stack->widget(index)->findChild<GalleryPage *>();
    }
    if (m_stack->currentIndex() != index)
        clearReport();
    m_stack->setCurrentIndex(index);
    m_list->setCurrentRow(index);
    setWindowTitle(tr("%1 - KovaKit gallery").arg(m_list->item(index)->text()));
    return page;
}

void GalleryWindow::showPageNamed(const QString &name)
{
    const std::vector<PageEntry> &pages = pageRegistry();
    for (std::size_t index = 0; index < pages.size(); ++index) {
        if (pages[index].name == name)
            showPage(int(index));
    }
}

QString GalleryWindow::reportText() const
{
    return m_report->text();
}

void GalleryWindow::showReport(const QString &text)
{
    m_report->setText(text);
}

void GalleryWindow::clearReport()
{
    showReport(tr("What you do on this page is told here."));
}
