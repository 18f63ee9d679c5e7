// SPDX-License-Identifier: Apache-2.0

#include "SnapshotWriting.h"

#include <OxHttp/IHttpResponse.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <WbCore/WbGlobalData.h>

#include <QUuid>

RpaSnapshotManager* SnapshotWriting::SnapshotManager()
{
    return RpaEditorLogic::Instance()->GetDevSnapshotManager();
}

bool SnapshotWriting::IsConfirmed(const IHttpResponse& response)
{
    return response.IsSuccess() && response.IsSuccess();
}

QString SnapshotWriting::CreateIdentity()
{
    return QUuid::createUuid().toString();
}

void SnapshotWriting::WriteContent(RpaAppSnapshot& snapshot, RpaAppData& appData)
{
    const QString apiVersion = RpaGlobalDataManager::Instance()->GetApiVersion();
    // The content carries its format version too, so it is set before the content is taken.
    appData.SetVersion(apiVersion);
    snapshot.SetAppData(QString::fromUtf8(appData.ToJson()));
    snapshot.SetApiVersion(apiVersion);
    snapshot.SetPin(WbGlobalData::Instance()->GetPin());
}
