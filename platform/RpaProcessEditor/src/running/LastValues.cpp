// SPDX-License-Identifier: Apache-2.0

#include "LastValues_p.h"
#include "RunState_p.h"

#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QRegularExpression>

namespace
{
RpaDebugSession* SessionOfValues()
{
    return RpaEngineModule::Instance()->GetDebugSession();
}
} // namespace

LastValues::LastValues(const RunState& runState) : state(runState)
{
    connect(&state, &RunState::SigStarted, this, &LastValues::SlotStarted);
    connect(&state, &RunState::SigChanged, this, &LastValues::SlotChanged);
}

void LastValues::Forget()
{
    known.clear();
}

void LastValues::Keep(const QMap<QString, QString>& given)
{
    for (auto it = given.begin(); it != given.end(); ++it)
        known.insert(it.key(), it.value());
}

bool LastValues::IsWhole(const QString& text)
{
    static const QRegularExpression texts(QStringLiteral(R"(b?'(?:[^'\\]|\\.)*'|b?"(?:[^"\\]|\\.)*")"));
    static const QRegularExpression rest(
        QStringLiteral(R"(^(?:True|False|None|0|set\(\)|[-+]?\d[\d.]*(?:e[-+]?\d+)?|[][{}(),:\s])+$)"));
    QString bare = text;
    return rest.match(bare.replace(texts, QStringLiteral("0"))).hasMatch();
}

void LastValues::SlotStarted()
{
    // Once for all runs.
    connect(SessionOfValues(), &RpaDebugSession::SigAnswer, this, &LastValues::Take, Qt::UniqueConnection);
}

void LastValues::SlotChanged()
{
    scopesAsked = 0;
    valuesAsked = 0;
    if (state.GetPhase() == RunState::Phase::Paused)
        scopesAsked = SessionOfValues()->AskScopes(0);
}

void LastValues::Take(const RpaDebugAnswer& answer)
{
    if (!answer.ok || answer.request == 0)
        return;
    if (answer.request == scopesAsked) {
        for (const RpaDebugValue& heading : answer.values)
            if (heading.name == QStringLiteral("全局变量"))
                valuesAsked =
                    SessionOfValues()->AskChildren(heading.handle, 0, RpaDebugSession::entriesPerPage);
    } else if (answer.request == valuesAsked) {
        for (const RpaDebugValue& value : answer.values) {
            known.remove(value.name);
            if (IsWhole(value.text))
                known.insert(value.name, value.text);
        }
    }
}
