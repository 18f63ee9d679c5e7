// SPDX-License-Identifier: Apache-2.0

#include <RpaEditorLogic/SaveLedger.h>

SaveLedger::Outcome SaveLedger::GetOutcome(const QString& versionId) const
{
    const Entry entry = entries.value(versionId);
    return entry.inFlight > 0 ? Outcome::InFlight : entry.outcome;
}

QByteArray SaveLedger::GetConfirmedSha256(const QString& versionId) const
{
    return entries.value(versionId).sha256;
}

bool SaveLedger::HasSavesInFlight() const
{
    return inFlight > 0;
}

void SaveLedger::Begin(const QString& versionId)
{
    ++inFlight;
    if (!versionId.isEmpty())
        ++entries[versionId].inFlight;
}

void SaveLedger::Confirm(const QString& appId, const QString& versionId, int revision,
                         const QByteArray& sha256)
{
    Entry& entry = entries[versionId];
    // A new version has an id only now, so nothing was counted for it.
    entry.inFlight = qMax(0, entry.inFlight - 1);
    entry.outcome = Outcome::Confirmed;
    entry.sha256 = sha256;
    emit SigSaveConfirmed(appId, versionId, revision, sha256);
}

void SaveLedger::Fail(const QString& appId, const QString& versionId, const QString& errorDesc)
{
    if (!versionId.isEmpty()) {
        Entry& entry = entries[versionId];
        entry.inFlight = qMax(0, entry.inFlight - 1);
        entry.outcome = Outcome::Failed;
    }
    emit SigSaveFailed(appId, versionId, errorDesc);
}

void SaveLedger::Refuse(const QString& appId, const QString& versionId, const QString& errorDesc)
{
    Entry& entry = entries[versionId];
    entry.inFlight = qMax(0, entry.inFlight - 1);
    emit SigSaveFailed(appId, versionId, errorDesc);
}

void SaveLedger::Abandon(const QString& appId, const QString& versionName, const QString& errorDesc)
{
    emit SigAbandonedSaveFailed(appId, versionName, errorDesc);
}

void SaveLedger::End()
{
    if (inFlight > 0 && --inFlight == 0)
        emit SigIdle();
}

void SaveLedger::Forget()
{
    entries.clear();
}

void SaveLedger::Reset(const QString& versionId, const QByteArray& sha256)
{
    Entry& entry = entries[versionId];
    entry.outcome = Outcome::Unknown;
    entry.sha256 = sha256;
}
