// SPDX-License-Identifier: MIT

#pragma once

#include "gallery-page.h"

#include <QHash>

class KovaLineEdit;
class QLabel;

// A settings form: fields whose errors appear and go, a long list to choose from, a foot bar.
class SettingsPage : public GalleryPage
{
    Q_OBJECT

public:
    SettingsPage();

private:
    QWidget *makeForm();
    QWidget *makeFootbar();
    QWidget *makeStates();
    KovaLineEdit *makeField(const QString &caption, const QString &text, const QString &unit);
    void check(KovaLineEdit *field);
    void save();

    QList<KovaLineEdit *> m_fields;
    QHash<KovaLineEdit *, QString> m_reasons;
    QLabel *m_problem = nullptr;
};
