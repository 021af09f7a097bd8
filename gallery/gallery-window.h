// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class GalleryPage;
class QLabel;
class QListWidget;
class QStackedWidget;

// The gallery's one window: the list of pages on the left, the page to its right, and below it what
// the page reports.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    // @p language is the code that is shown beside the scale.
    explicit GalleryWindow(const QString &language);

    // Shows the page at @p index of the registry and returns it. Makes it if it is new.
    GalleryPage *showPage(int index);

    // Shows the page called @p name, if there is one.
    void showPageNamed(const QString &name);

    // What the page reported last, as shown.
    [[nodiscard]] QString reportText() const;

    // Forgets what the page reported.
    void clearReport();

    // The size for which pages are made.
    [[nodiscard]] static QSize designSize();

private:
    QWidget *makeNavigation(const QString &language);
    QWidget *makeContent();
    QWidget *makePageFrame(int index);
    // Shows the page that is selected in the list; selects the one that is shown if none is.
    void showSelected();
    void showReport(const QString &text);

    QListWidget *m_list;
    QStackedWidget *m_stack;
    QLabel *m_report;
};
