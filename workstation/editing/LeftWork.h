// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <QHash>
#include <QObject>

#include <functional>

// What an editor leaves behind when it goes: nobody but the workstation can tell the author any more what
// became of it.
class LeftWork : public QObject
{
    Q_OBJECT

public:
    // hasDraft: whether unsaved work of an app is on the disk.
    explicit LeftWork(std::function<bool(const QString& appId)> hasDraft, QObject* parent = nullptr);

    // The editor of the app is gone. Says which deletions and releases have no outcome yet.
    void Leave(const AppRecord& app);

private:
    void TellFailedSave(const QString& appId, const QString& versionName, const QString& errorDesc) const;

    const std::function<bool(const QString& appId)> keepsDraft;
    QHash<QString, QString> names; // of apps by id
};
