// SPDX-License-Identifier: Apache-2.0

#include "CallLog.h"

#include <QHash>

namespace
{
QStringList& Calls()
{
    static QStringList calls;
    return calls;
}

QHash<QString, std::function<void()>>& Waiting()
{
    static QHash<QString, std::function<void()>> waiting;
    return waiting;
}
} // namespace

void CallLog::Note(const QString& call)
{
    Calls().append(call);
    if (const auto meanwhile = Waiting().take(call))
        meanwhile();
}

QStringList CallLog::Take()
{
    QStringList taken = Calls();
    Calls().clear();
    return taken;
}

void CallLog::WhenNoted(const QString& call, const std::function<void()>& meanwhile)
{
    Waiting().insert(call, meanwhile);
}
