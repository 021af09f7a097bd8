// SPDX-License-Identifier: MIT

#include "path-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/kova-button-path.h>
#include <kovakit-qt/widgets/kova-button.h>

#include <QDir>
#include <QListWidget>
#include <QListWidgetItem>
#include <QPushButton>
#include <QToolButton>

#include <utility>

namespace {

// What is out of sight is decided when the path is given, so it is given again with each width.
class FollowingPath : public KovaButtonPath
{
public:
    void setPath(const QString &path)
    {
        m_path = path;
        refresh(path);
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        KovaButtonPath::resizeEvent(event);
        refresh(m_path);
    }

private:
    QString m_path;
};

} // namespace

PathPage::PathPage()
{
    add(makeWalk());
    add(makeNames());
    goTo(QStringLiteral("/usr/share/doc"));
}

QWidget *PathPage::makeWalk()
{
    auto *card = new Card(tr("Walk through your folders"),
                          tr("Both bars show the same folder. The narrow one drops down "
                             "a menu of what is out of its sight."));
    auto *wide = new FollowingPath;
    wide->setAccessibleName(tr("Folder"));
    auto *narrow = new FollowingPath;
    narrow->setAccessibleName(tr("Folder, in a narrow bar"));
    narrow->setFixedWidth(kovaPx(130));
    for (KovaButtonPath *bar :
         {static_cast<KovaButtonPath *>(wide), static_cast<KovaButtonPath *>(narrow)}) {
        connect(bar, &KovaButtonPath::sigUpdatePath, this,
                [this](const QString &path) { goTo(QLatin1Char('/') + path); });
        m_bars.append(bar);
    }
    card->add(wide);
    card->addRow({narrow});
    addPopup(narrow, QStringLiteral("menu"),
             [narrow] { narrow->findChild<QToolButton *>()->showMenu(); });

    m_folders = new QListWidget;
    m_folders->setStyleSheet(getStyleSheet("gallery.page_list", false)
                             + getStyleSheet("component.scrollbar", false));
    m_folders->setAccessibleName(tr("Folders inside"));
    m_folders->setFixedHeight(kovaPx(150));
    connect(m_folders, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem *item) { goTo(QDir(m_path).filePath(item->text())); });
    card->add(m_folders);
    // For those who can select a folder and not activate it.
    auto *open = new KovaButton(tr("Open folder"), KovaButton::Standard);
    open->setEnabled(false);
    connect(open, &QPushButton::clicked, this, [this] {
        goTo(QDir(m_path).filePath(m_folders->selectedItems().constFirst()->text()));
    });
    connect(m_folders, &QListWidget::itemSelectionChanged, open,
            [this, open] { open->setEnabled(!m_folders->selectedItems().isEmpty()); });
    card->addRow({open});
    return card;
}

QWidget *PathPage::makeNames()
{
    auto *card = new Card(tr("Names that need care"),
                          tr("Ampersands, blanks, other directions of writing."));
    auto *bar = new FollowingPath;
    bar->setAccessibleName(tr("Folder with unusual names"));
    bar->setPath(QStringLiteral("R&D/two  blanks/מסמכים/<b>bold/50% off"));
    connect(bar, &KovaButtonPath::sigUpdatePath, this,
            [this](const QString &path) { report(tr("Picked: \"%1\".").arg(path)); });
    card->add(bar);
    return card;
}

void PathPage::goTo(const QString &path)
{
    m_path = path;
    for (KovaButtonPath *bar : qAsConst(m_bars))
        static_cast<FollowingPath *>(bar)->setPath(path);
    m_folders->clear();
    m_folders->addItems(QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name));
    report(tr("You are in %1.").arg(QDir::toNativeSeparators(path)));
}
