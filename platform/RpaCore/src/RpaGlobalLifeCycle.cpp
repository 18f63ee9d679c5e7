// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RpaGlobalLifeCycle.h>

#include <QScopedValueRollback>

RpaGlobalLifeCycle* RpaGlobalLifeCycle::Instance()
{
    static RpaGlobalLifeCycle instance;
    return &instance;
}

void RpaGlobalLifeCycle::AddLogic(IRpaLifeCycle* logic)
{
    if (logic && !logics.contains(logic))
        logics.append(logic);
}

void RpaGlobalLifeCycle::RemoveLogic(IRpaLifeCycle* logic)
{
    logics.removeOne(logic);
}

bool RpaGlobalLifeCycle::BeforeClose()
{
    // A logic asks the user in a nested event loop; a second close meanwhile must not ask the same question
    // again.
    if (asking)
        return false;
    const QScopedValueRollback<bool> guard(asking, true);

    const QList<IRpaLifeCycle*> asked = logics;
    for (IRpaLifeCycle* logic : asked)
        if (logics.contains(logic) && logic->BeforeClose() == BeforeCloseResult::Refused)
            return false;
    return true;
}
