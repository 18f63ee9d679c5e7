// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEditorLogic/RpaEditorLogicExport.h>

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>

// What became of the saves: for whoever must not let go of work before the server has it (the draft journal,
// the workstation before it closes, a release). Already up to date when the observers of a save hear its
// answer. GUI thread only.
class RPAEDITORLOGIC_EXPORT SaveLedger : public QObject
{
    Q_OBJECT

public:
    enum class Outcome
    {
        Unknown, // never saved here, or loaded anew since
        InFlight,
        Confirmed,
        Failed,
    };

    // Outcome of the last save into the version.
    Outcome GetOutcome(const QString& versionId) const;

    // SHA-256, as lower-case hex, of the content that the server confirmed last for the version, by a save or
    // by a load; empty when there is none.
    QByteArray GetConfirmedSha256(const QString& versionId) const;

    // Whether any save or overwrite is not answered yet.
    bool HasSavesInFlight() const;

    // Used by the request library. A save of a new version has no id until it is confirmed.
    void Begin(const QString& versionId);
    void Confirm(const QString& appId, const QString& versionId, int revision, const QByteArray& sha256);
    void Fail(const QString& appId, const QString& versionId, const QString& errorDesc);
    // Nothing could be saved into the version, whatever it was: a released one takes no content. The outcome
    // of the save before stands.
    void Refuse(const QString& appId, const QString& versionId, const QString& errorDesc);
    // Nobody who asked for the failed save is there any more.
    void Abandon(const QString& appId, const QString& versionName, const QString& errorDesc);
    // The observers have heard the answer; belongs to each Begin().
    void End();
    // The content of the version was loaded; an earlier failure no longer matters.
    void Reset(const QString& versionId, const QByteArray& sha256);
    // Forgets the outcomes; saves in flight still count.
    void Forget();

signals:
    // The server has the content durably.
    void SigSaveConfirmed(const QString& appId, const QString& versionId, int revision,
                          const QByteArray& sha256);
    // versionId is empty for a new version.
    void SigSaveFailed(const QString& appId, const QString& versionId, const QString& errorDesc);
    // After SigSaveFailed, when the editor that asked for the save, or its dialog, is gone: somebody else
    // must tell the author.
    void SigAbandonedSaveFailed(const QString& appId, const QString& versionName, const QString& errorDesc);
    // The last save in flight was answered.
    void SigIdle();

private:
    struct Entry
    {
        Outcome outcome = Outcome::Unknown;
        int inFlight = 0;
        QByteArray sha256;
    };

    QHash<QString, Entry> entries;
    int inFlight = 0;
};
