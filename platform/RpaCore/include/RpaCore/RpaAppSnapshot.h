// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaCoreExport.h>

#include <QSharedPointer>
#include <QString>

// State of a version.
enum AppSnapshotState : int
{
    AppSnapshotDevelop = 1,
    AppSnapshotGray = 2,
    AppSnapshotOnline = 3,
};

// One version of an app, held by shared pointer. Its content (app data) is filled only in a record that is to
// be saved; the versions of a list carry none.
class RPACORE_EXPORT RpaAppSnapshot
{
public:
    // Id with the version service; empty while it was never saved.
    QString GetId() const { return id; }
    void SetId(const QString& value) { id = value; }

    // What the author calls the version; unique in its app.
    QString GetName() const { return name; }
    void SetName(const QString& value)
    {
        name = value;
        isNamed = true;
    }

    // Whether SetName() was called since SetNamed(false). Listed records start without it: an overwrite whose
    // record has it was asked for by somebody who picked the version by its name.
    bool IsNamed() const { return isNamed; }
    void SetNamed(bool value) { isNamed = value; }

    // What the author wrote about it.
    QString GetDesc() const { return desc; }
    void SetDesc(const QString& value) { desc = value; }

    // Id of the app it is a version of.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

    // For whom it is: the author, some users or all.
    AppSnapshotState GetState() const { return state; }
    void SetState(AppSnapshotState value) { state = value; }

    // JSON text of the app.
    QString GetAppData() const { return appData; }
    void SetAppData(const QString& value) { appData = value; }

    // Version of the app-data format the content was written with.
    QString GetApiVersion() const { return apiVersion; }
    void SetApiVersion(const QString& value) { apiVersion = value; }

    // Account id of the user who saved it.
    QString GetPin() const { return pin; }
    void SetPin(const QString& value) { pin = value; }

private:
    QString id;
    QString name;
    bool isNamed = false;
    QString desc;
    QString appId;
    AppSnapshotState state = AppSnapshotDevelop;
    QString appData;
    QString apiVersion;
    QString pin;
};

using RpaAppSnapshotPtr = QSharedPointer<RpaAppSnapshot>;
