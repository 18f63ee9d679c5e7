// SPDX-License-Identifier: Apache-2.0

#include "CloseGuard.h"

#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <chrono>

namespace
{
// The transport answers every save by its own deadline; this one only keeps a fault in it from holding the
// window. Work that was not confirmed by then stays in the draft journal.
constexpr auto longestWait = std::chrono::seconds(90);
} // namespace

CloseGuard::CloseGuard(SaveLedger* saves, QObject* parent) : QObject(parent), ledger(saves)
{
    patience.setSingleShot(true);
    connect(ledger, &SaveLedger::SigIdle, this, [this] {
        if (state == State::Waiting)
            Finish();
    });
    connect(&patience, &QTimer::timeout, this, &CloseGuard::Finish);
}

void CloseGuard::RequestClose()
{
    if (state != State::Open)
        return;
    state = State::Asking;
    if (!RpaGlobalLifeCycle::Instance()->BeforeClose()) {
        state = State::Open;
        return;
    }
    if (!ledger->HasSavesInFlight()) {
        Finish();
        return;
    }
    state = State::Waiting;
    patience.start(longestWait);
    emit SigWaiting();
}

void CloseGuard::Finish()
{
    patience.stop();
    state = State::Closing;
    emit SigMayClose();
}
