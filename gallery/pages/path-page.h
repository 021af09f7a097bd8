// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

class KovaButtonPath;
class QListWidget;

// Bars with a button for each folder, over the file system of the visitor.
class PathPage : public GalleryPage
{
    Q_OBJECT

public:
    PathPage();

private:
    QWidget *makeWalk();
    QWidget *makeNames();
    void goTo(const QString &path);

    QList<KovaButtonPath *> m_bars;
    QListWidget *m_folders = nullptr;
    QString m_path;
};
