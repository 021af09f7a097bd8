// SPDX-License-Identifier: MIT

#include "component-strings.h"

#include "component-strings_p.h"

#include <kovakit-qt/utils/util.h>

#include <QLoggingCategory>

ComponentStrings *ComponentStrings::getInstance()
{
    static ComponentStrings instance;
    return &instance;
}

void ComponentStrings::installStrings(const QMap<QString, QString> &strings)
{
    m_strings = strings;
}

QString ComponentStrings::getString(const QString &key) const
{
    const auto found = m_strings.constFind(key);
    if (found != m_strings.constEnd())
        return *found;
    qCWarning(debug_message) << "Cannot find key in ComponentStrings" << key;
    return key;
}

bool ComponentStrings::hasString(const QString &key) const
{
    return m_strings.contains(key);
}

QString componentString(const char *key)
{
    return ComponentStrings::getInstance()->getString(QString::fromLatin1(key));
}

QString componentString(const char *key, const char *substitute)
{
    const ComponentStrings *strings = ComponentStrings::getInstance();
    const QString name = QString::fromLatin1(key);
    return strings->hasString(name) ? strings->getString(name) : QString::fromUtf8(substitute);
}
