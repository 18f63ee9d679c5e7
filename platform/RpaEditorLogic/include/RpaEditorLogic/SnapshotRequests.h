// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/IHttpRequest.h>
#include <OxHttp/IHttpResponse.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorLogic/RpaEditorLogicExport.h>

#include <QByteArray>

// The requests of the version service and their answers. Each request is sent by the operation of
// RpaEditorLogic of the same name, and is answered exactly once on the GUI thread.

// Saves the record as a new version.
class RPAEDITORLOGIC_EXPORT SaveAppSnapshotInfoRequest : public IHttpRequest
{
    Q_OBJECT

public:
    using IHttpRequest::IHttpRequest;

    // The record to save as a new version; it has its id when the answer arrives.
    RpaAppSnapshotPtr GetSnapshotInfoPtr() const { return snapshot; }
    void SetSnapshotInfoPtr(const RpaAppSnapshotPtr& value) { snapshot = value; }

private:
    RpaAppSnapshotPtr snapshot;
};

// Overwrites a version with content, name and description of the record.
class RPAEDITORLOGIC_EXPORT UpdateAppSnapshotInfoRequest : public IHttpRequest
{
    Q_OBJECT

public:
    using IHttpRequest::IHttpRequest;

    // The record, with its id and content.
    RpaAppSnapshotPtr GetSnapshotInfoPtr() const { return snapshot; }
    void SetSnapshotInfoPtr(const RpaAppSnapshotPtr& value) { snapshot = value; }

private:
    RpaAppSnapshotPtr snapshot;
};

// Deletes a version.
class RPAEDITORLOGIC_EXPORT DeleteAppSnapshotInfoRequest : public IHttpRequest
{
    Q_OBJECT

public:
    using IHttpRequest::IHttpRequest;

    // May stay empty: the version id alone names the version.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

    // Id of the version with the version service.
    QString GetSnapshotId() const { return snapshotId; }
    void SetSnapshotId(const QString& value) { snapshotId = value; }

private:
    QString appId;
    QString snapshotId;
};

// Asks for the versions of an app; the snapshot manager holds them when it is answered.
class RPAEDITORLOGIC_EXPORT GetSnapshotListRequest : public IHttpRequest
{
    Q_OBJECT

public:
    using IHttpRequest::IHttpRequest;

    // Id of the app with the version service.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

private:
    QString appId;
};

// Asks for the content of a version.
class RPAEDITORLOGIC_EXPORT GetDevSnapshotDataRequest : public IHttpRequest
{
    Q_OBJECT

public:
    using IHttpRequest::IHttpRequest;

    // Id of the version with the version service.
    QString GetSnapshotId() const { return snapshotId; }
    void SetSnapshotId(const QString& value) { snapshotId = value; }

private:
    QString snapshotId;
};

// Releases a version to some users or to all.
class RPAEDITORLOGIC_EXPORT GrayOrReleaseRequest : public IHttpRequest
{
    Q_OBJECT

public:
    using IHttpRequest::IHttpRequest;

    // Id of the app with the version service.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

    // Id of the version with the version service.
    QString GetSnapshotId() const { return snapshotId; }
    void SetSnapshotId(const QString& value) { snapshotId = value; }

    // 1 gray release, 2 publish online.
    int GetPublishType() const { return publishType; }
    void SetPublishType(int value) { publishType = value; }

private:
    QString appId;
    QString snapshotId;
    int publishType = 0;
};

// Answer of a request that brings nothing but its outcome.
class RPAEDITORLOGIC_EXPORT SnapshotResponse : public IHttpResponse
{
    Q_OBJECT

public:
    using IHttpResponse::IHttpResponse;

    bool IsSuccess() const override { return success; }
    QString GetErrorDesc() const override { return errorDesc; }
    // Used by the request library: whether it worked, else why not, in the user's words.
    void SetOutcome(bool ok, const QString& error);

private:
    bool success = false;
    QString errorDesc;
};

// The content that was asked for.
class RPAEDITORLOGIC_EXPORT GetDevSnapshotDataResponse : public SnapshotResponse
{
    Q_OBJECT

public:
    using SnapshotResponse::SnapshotResponse;

    // The app's JSON, length and hash verified.
    QByteArray GetAppData() const { return appData; }
    void SetAppData(const QByteArray& value) { appData = value; }

private:
    QByteArray appData;
};

// How a release went.
class RPAEDITORLOGIC_EXPORT GrayOrReleaseResponse : public SnapshotResponse
{
    Q_OBJECT

public:
    using SnapshotResponse::SnapshotResponse;

    // Zero: the release did not take effect.
    int GetResult() const { return result; }
    void SetResult(int value) { result = value; }

    // As the server answered: whether the host is to tell of the release. Only passed on here.
    bool GetNeedTip() const { return needTip; }
    void SetNeedTip(bool value) { needTip = value; }

private:
    int result = 0;
    bool needTip = false;
};
