// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorLogic/SnapshotRequests.h>

#include <QByteArray>
#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QVector>

// Stands in for the request library in the program that it is linked into: RpaEditorLogic sends nothing
// there, notes each request in the CallLog, and the test answers when and what it likes. Answers go to the
// oldest request of their kind that was not answered yet; a test that answers more often fails.
//
//     list app1 | load v1 | overwrite v1 | save 版本1 | delete v1 of app1 | release v1 of app1 as 2
//
// The program's own definition is found before the library's, which ELF does and Windows does not.
namespace StandInRequests
{
// Forgets requests and versions.
void Reset();

// A record of a version of "app1".
RpaAppSnapshotPtr Version(const QString& id, const QString& name, AppSnapshotState state = AppSnapshotDevelop,
                          const QString& description = QString());

void AnswerList(const QVector<RpaAppSnapshotPtr>& versions);
void FailList(const QString& error);
void AnswerData(const QByteArray& json);
void FailData(const QString& error);
// Overwrite and deletion; a deleted version is out of the list before anybody hears of it.
void AnswerOverwrite(bool ok = true, const QString& error = QString());
void AnswerDeletion(bool ok = true, const QString& error = QString());
// The new version is listed first, as the server does it; or it is not in the list.
void AnswerSave(const QString& newId);
void AnswerSaveUnlisted(const QString& newId);
void AnswerRelease(int result, bool needTip);

// The record that the oldest unanswered request of the kind would write.
RpaAppSnapshotPtr Overwritten();
RpaAppDataPtr ContentOf(const RpaAppSnapshotPtr& version);

// Hands an answer out that no request of this program was for.
void AnswerForeignDeletion(const QString& versionId);
} // namespace StandInRequests
