// SPDX-License-Identifier: MIT

#pragma once

#include <kovakit-qt/kovakit-export.h>

#include <QString>

/** Which help article a HelpWindow shows. A plain value; every field is sent as it stands. */
struct KOVAKIT_EXPORT HelpContext
{
    /** The user's language as a three-letter code, such as "deu" or "enu". */
    QString lang;
    /** The folder of the offline help, with one folder for each help language in it. */
    QString offlineHelpDir;
    /** The file name of the article, relative to the folder of its language. */
    QString link;
    /** The section that the article belongs to; for the server only. */
    QString section;
    /** The version of the help; for the server only. */
    QString version;
};
