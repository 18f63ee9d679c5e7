// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionFacts.h"

#include <RpaServiceClient/VersionServiceClient.h>

#include <QObject>

// Knows who saved the versions of the app that is being edited, with which note, and which of them users
// have. Outlives the dialogs that show it.
class VersionController : public QObject
{
    Q_OBJECT

public:
    // The versions of another app; empty: of none.
    void SetApp(const QString& appId);

    // Asks the server; what is known stays until the answer is there.
    void Load();

    // The versions in the order of the editor's list.
    QVector<VersionFacts> GetVersions() const;
    // Of the version that the editor's list shows under this name; without id when there is none.
    VersionFacts FindShown(const QString& shownName) const;
    const QVector<VersionServiceRelease>& GetReleases() const { return releases; }

    bool IsLoading() const { return waiting > 0; }
    // Why nothing is known, in the user's words; empty otherwise.
    QString GetProblem() const { return problem; }

    // Keeps what the author says of the save. Ends with SigNoted or SigNotNoted.
    void Note(const VersionServiceSave& save, const QString& note);

signals:
    void SigChanged();
    void SigNoted();
    void SigNotNoted(const QString& problem);

private:
    void Take(const QString& failure);
    void TakeNote(const VersionServiceSave& save, const QString& note);

    VersionServiceClient client;
    QString app;
    QVector<VersionServiceSave> saves;
    QVector<VersionServiceRelease> releases;
    QString problem;
    int waiting = 0;
    quint64 round = 0; // answers of an earlier one are not believed
};
