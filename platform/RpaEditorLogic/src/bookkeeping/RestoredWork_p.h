// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorLogic/RestoredContent.h>

#include <QSet>
#include <QString>
#include <QVector>

#include <algorithm>
#include <optional>

// Unsaved work on its way back into an editor.
class RestoredWork
{
public:
    void Set(const RestoredContent& content) { waiting = content; }
    // What is on its way does not come any more; what was shown stays known.
    void Withdraw() { waiting.reset(); }
    void Forget();

    // An editor opens the first version of the list: that is the one the work goes back to.
    template <typename Record>
    void PutFirst(QVector<Record>* records) const;

    bool IsWaitingFor(const QString& versionId) const;
    // For the version that was just loaded, once. Work that goes on from what the version holds is based on
    // that, whatever it was based on when it was kept.
    std::optional<RestoredContent> Take(const QString& versionId, int revision, const QByteArray& sha256);

    // Why what is being edited as this version must not be saved into it; empty when it may.
    QString Refusal(const QString& versionId) const;

private:
    std::optional<RestoredContent> waiting;
    QSet<QString> strangers; // versions shown with work that is based on none of their revisions
};

template <typename Record>
void RestoredWork::PutFirst(QVector<Record>* records) const
{
    if (!waiting)
        return;
    const auto isFirst = [this](const Record& record) { return record.id == waiting->versionId; };
    std::stable_partition(records->begin(), records->end(), isFirst);
}
