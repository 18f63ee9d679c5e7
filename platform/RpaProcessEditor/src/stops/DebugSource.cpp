// SPDX-License-Identifier: Apache-2.0

#include "DebugSource_p.h"

#include <RpaEngineModule/RpaEngineModule.h>

namespace
{
class EngineDebugSource : public DebugSource
{
public:
    explicit EngineDebugSource(RpaDebugSession* debugged) : DebugSource(debugged), session(debugged)
    {
        connect(session, &RpaDebugSession::SigStarted, this, &DebugSource::SigStarted);
        connect(session, &RpaDebugSession::SigPaused, this, &DebugSource::SigPaused);
        connect(session, &RpaDebugSession::SigResumed, this, &DebugSource::SigResumed);
        connect(session, &RpaDebugSession::SigEnded, this, &DebugSource::SigEnded);
        connect(session, &RpaDebugSession::SigAnswer, this, &DebugSource::SigAnswer);
        connect(session, &RpaDebugSession::SigWatches, this, &DebugSource::SigWatches);
    }

    RpaDebugSession::State GetState() const override { return session->GetState(); }
    RpaPause GetPause() const override { return session->GetPause(); }
    void SetBreakpoints(const QVector<RpaBreakpoint>& points) override { session->SetBreakpoints(points); }
    void SetWatches(const QStringList& expressions) override { session->SetWatches(expressions); }
    int AskScopes(int frame) override { return session->AskScopes(frame); }
    int AskChildren(int handle, int first, int count) override
    {
        return session->AskChildren(handle, first, count);
    }
    int Evaluate(int frame, const QString& expression) override
    {
        return session->Evaluate(frame, expression);
    }
    int SetValue(int frame, int handle, const RpaDebugValue& value, const QString& expression) override
    {
        return session->SetValue(frame, handle, value, expression);
    }

private:
    RpaDebugSession* const session;
};
} // namespace

DebugSource* DebugSource::Instance()
{
    static auto* const one =
        new EngineDebugSource(RpaEngineModule::Instance()->GetDebugSession()); // its child
    return one;
}
