// SPDX-License-Identifier: MIT

#include "warning-catcher.h"

#include <QtGlobal>

namespace {

QStringList caught;
QtMessageHandler handlerBefore = nullptr;

void catchMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg && qstrcmp(context.category, "debug.message") == 0)
        caught.append(text);
    else if (handlerBefore)
        handlerBefore(type, context, text);
}

} // namespace

WarningCatcher::WarningCatcher()
{
    caught.clear();
    handlerBefore = qInstallMessageHandler(catchMessage);
}

WarningCatcher::~WarningCatcher()
{
    qInstallMessageHandler(handlerBefore);
}

QStringList WarningCatcher::take()
{
    return std::exchange(caught, {});
}
