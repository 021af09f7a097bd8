// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

#include <map>
#include <vector>

/**
 * The style sheets of the host, by key.
 *
 * The host hands over a list of style files, text files of entries such as
 *
 *     == component.apply_button ==
 *     QPushButton { padding: 4px 12px; border-image: url(IMG_LOC/frame.png); }
 *
 * A header line begins and ends with "==" exactly; what follows up to the next header is the text
 * of its key. Everything from slash-star to star-slash, and from two slashes to the end of the
 * line, is a comment. "TMPIMG_LOC" and "IMG_LOC" stand for the two picture folders of
 * ImageManager, written so that no slash of theirs begins a comment and no "16px" in a folder's
 * name counts as a length. GUI thread only.
 */
class KOVAKIT_EXPORT StyleManager
{
public:
    /** The one instance of the process, created by the first call and empty at first. */
    static StyleManager *getInstance();

    /**
     * Reads @p files in their order; where a key is defined twice, the last text wins.
     *
     * ImageManager::initialize() must have been called before, or the process ends. A file that
     * does not exist is skipped with a warning, one that cannot be read counts as empty. May be
     * called again: keys are added and replaced, none is removed.
     */
    void initialize(const std::vector<QString> &files);

    /**
     * The style sheet of @p key, its pixel lengths multiplied by the display scale unless
     * @p noScale is true.
     *
     * An unknown key gives an empty string and logs a warning. A text begins with a line feed.
     */
    [[nodiscard]] QString getStyleSheet(const QString &key, bool noScale) const;

    /** Whether there is a text for @p key. For looks that a theme may do without. */
    [[nodiscard]] bool hasStyleSheet(const QString &key) const;

private:
    StyleManager() = default;
    Q_DISABLE_COPY(StyleManager)

    std::map<QString, QString> m_styleSheets;
};

/** The style sheet of @p key, given in Latin-1, from the one StyleManager; null is the empty key.
 */
[[nodiscard]] KOVAKIT_EXPORT QString getStyleSheet(const char *key, bool noScale);

/** The style sheet of @p key from the one StyleManager. */
[[nodiscard]] KOVAKIT_EXPORT QString getStyleSheet(const QString &key, bool noScale);
