// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaDrafts/RpaDraftJournal.h>

#include <memory>

// A journal of its own for each test, in an empty folder, open for one app and quick to write.
class DraftJournalFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    // As an editor makes it: loaded content of a version.
    static RpaAppDataPtr Loaded(const QString& version = versionId, int revision = 3);
    static void Edit(RpaAppData& app, const QString& text);
    // As a save does: the packages are checked, the mark goes, then the content is marked and sent. What was sent.
    static QByteArray Send(RpaAppData& app);
    static QByteArray Sha256(const QByteArray& bytes);

    QStringList Names() const;
    // The only draft that there is; fails when there are others.
    RpaDraft Only();
    QVector<RpaDraft> All(QStringList* refusals = nullptr);
    // A folder where the unfinished draft would be.
    QString Obstacle() const;
    void PutObstacle() const;

    static const QString account;
    static const QString appId;
    static const QString versionId;

    std::unique_ptr<TestFolder> folder;
    QString path;
    std::unique_ptr<RpaDraftJournal> journal;
};
