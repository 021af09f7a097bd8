// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

#include <map>

/** Orders texts without regard to case: two that differ in case alone are the same key. */
struct KOVAKIT_EXPORT CaseLessCompare
{
    /** Whether @p a comes before @p b. */
    bool operator()(const QString &a, const QString &b) const
    {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    }
};

/**
 * The file names of the icons for kinds of files, by file name extension.
 *
 * It answers with a name such as "audio.png" alone; the pictures and their folder are the host's.
 * The table is built in and one for all: it is filled when the one instance is created, and
 * look-ups may come from any thread as long as nobody adds to it with mappingFile().
 */
class KOVAKIT_EXPORT FileTypeMap
{
public:
    /** Gives every built-in extension its icon; getInstance() does it once, by itself. */
    FileTypeMap();

    /** The one instance of the process; the first call fills the table. */
    static FileTypeMap *getInstance();

    /**
     * The icon's file name for @p extension, given without its dot and in any case.
     *
     * An extension that is not known, an empty one or a whole file name gives "xxx.png". With
     * @p removed the name is that of the icon for a removed file, "audio_removed.png".
     */
    [[nodiscard]] QString getFiletypeMapping(const QString &extension, bool removed) const;

    /**
     * Gives each of @p extensions, a list with one blank between two, the icon named after @p type.
     *
     * An extension that the table has already gets the new type. Call it before other threads look
     * anything up.
     */
    void mappingFile(const QString &type, const QString &extensions);

private:
    Q_DISABLE_COPY(FileTypeMap)

    static std::map<QString, QString, CaseLessCompare> m_file_type_map;
};
