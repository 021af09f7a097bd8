// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>
#include <QTreeWidgetItem>

/**
 * A tree item for a file or folder, sorted by its text, that lets a "home" entry stay in front.
 *
 * The library reads the tag alone. The other members are room for what a client knows about the
 * entry; their names are suggestions.
 */
class KOVAKIT_EXPORT FileSystemTreeWidgetItem : public QTreeWidgetItem
{
public:
    /** An item without text and parent; add it to a tree or another item, which then owns it. */
    FileSystemTreeWidgetItem();

    /**
     * Whether this item sorts before @p other: by the text of the sort column, but nothing sorts
     * before an item whose tag is "home".
     *
     * Only the tag of @p other counts. Put in first, the home entry therefore stays in front of all
     * others in ascending order; in descending order it stays in front of those whose text sorts
     * before its own. Throws std::bad_cast if @p other is no FileSystemTreeWidgetItem: do not mix
     * classes of items in one tree.
     */
    bool operator<(const QTreeWidgetItem &other) const override;

    /** What kind of entry it is, in the client's words; "home" marks the one that stays in front.
     */
    QString tag;
    /** Size in bytes. Client data. */
    qint64 size = 0;
    /** Time of the last change, in milliseconds since the epoch. Client data. */
    qint64 modifiedTime = 0;
    /** Whether the entry's children have been read. Client data. */
    bool loaded = false;
    /** Whether the entry may not be changed. Client data. */
    bool readOnly = false;
    /** Whether the entry is a symbolic link. Client data. */
    bool symbolicLink = false;
    /** Whether the entry is shared with others. Client data. */
    bool shared = false;
    /** How many entries it contains. Client data. */
    int entryCount = 0;
};
