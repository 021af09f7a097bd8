// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QVBoxLayout;

// Something that opens over a page and is worth a picture of its own.
struct Scene
{
    QString name; // the picture is called "<page>-<name>.png"

    // Opens it. May block until it is closed; may return at once too.
    std::function<void()> open;

    // Whether it is complete enough for the picture, asked until it is; empty for "at once".
    std::function<bool()> ready;

    // What a menu or list drops down from, null for a scene inside the window. It is brought to the
    // corner of the screen, for the picture may be taken on one that is smaller than the window.
    QWidget *opener = nullptr;
};

// Base of all pages: a column of cards in a scroll area of the window, which shows the page's title
// and what the page reports.
//
// To add a page, derive from this class in pages/<topic>-page.{h,cpp}, fill it with the helpers of
// page-widgets.h, give addScene() whatever opens over the page, and add a line to
// page-registry.cpp. Words stand in tr(), and their translations in words/*.json. A page should
// need no scroll bar in a window of 960 by 680 design pixels, for the picture of a page is one of
// the window. Do not start timers or show anything at construction.
class GalleryPage : public QWidget
{
    Q_OBJECT

public:
    GalleryPage();

    // What opens over this page, in the order in which it was added.
    [[nodiscard]] const std::vector<Scene> &scenes() const { return m_scenes; }

    // Whether the page is complete enough for a picture. For pages that load something.
    [[nodiscard]] virtual bool isReady() const { return true; }

Q_SIGNALS:
    // What a control of the page did, in words.
    void reported(const QString &text);

protected:
    // Appends @p widget, usually a card, to the column.
    void add(QWidget *widget);

    // The same for one that takes the height that the window has left over.
    void addGrowing(QWidget *widget);

    // Appends several widgets, side by side and equally wide.
    void addSideBySide(std::initializer_list<QWidget *> widgets);

    // Names something that the page can open over itself.
    void addScene(const QString &name, std::function<void()> open,
                  std::function<bool()> ready = nullptr);

    // The same for what drops down from @p opener.
    void addPopup(QWidget *opener, const QString &name, std::function<void()> open,
                  std::function<bool()> ready = nullptr);

    // Shows @p text below the page. For what a call returned or what a click did.
    void report(const QString &text) { Q_EMIT reported(text); }

private:
    QVBoxLayout *m_column;
    std::vector<Scene> m_scenes;
};
