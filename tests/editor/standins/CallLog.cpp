#include "CallLog.h"

namespace
{
QStringList& Calls()
{
    static QStringList calls;
    return calls;
}
} // namespace

void CallLog::Note(const QString& call)
{
    Calls().append(call);
}

QStringList CallLog::Take()
{
    const QStringList taken = Calls();
    Calls().clear();
    return taken;
}
