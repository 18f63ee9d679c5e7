// SPDX-License-Identifier: Apache-2.0

#include "DebuggedApp_p.h"

DebuggedApp::DebuggedApp(DebugSource* debugged, QObject* parent) : QObject(parent), source(debugged)
{
    connect(source, &DebugSource::SigEnded, this, &DebuggedApp::Take);
}

DebuggedApp* DebuggedApp::Instance()
{
    static auto* const one = new DebuggedApp(DebugSource::Instance(), DebugSource::Instance());
    return one;
}

void DebuggedApp::Use(const QSharedPointer<AppBreakpoints>& list)
{
    wanted = list;
    if (source->GetState() == RpaDebugSession::State::Idle)
        Take();
}

bool DebuggedApp::Is(const RpaAppData* app) const
{
    const QSharedPointer<AppBreakpoints> list = current.toStrongRef();
    return app && list && list->App() == app;
}

void DebuggedApp::Take()
{
    if (current == wanted)
        return;
    if (const QSharedPointer<AppBreakpoints> former = current.toStrongRef())
        former->disconnect(this);
    current = wanted;
    if (const QSharedPointer<AppBreakpoints> list = current.toStrongRef()) {
        connect(list.data(), &AppBreakpoints::SigChanged, this, &DebuggedApp::Send);
        connect(list.data(), &QObject::destroyed, this, &DebuggedApp::Send);
    }
    Send();
}

void DebuggedApp::Send()
{
    const QSharedPointer<AppBreakpoints> list = current.toStrongRef();
    source->SetBreakpoints(list ? list->Get() : QVector<RpaBreakpoint>());
}
