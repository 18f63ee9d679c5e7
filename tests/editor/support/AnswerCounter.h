// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaEditorLogic/RpaNotifyId.h>

#include <QHash>

// Counts the answers of each kind, whoever asked.
class AnswerCounter : public HttpObserverBase
{
public:
    AnswerCounter()
    {
        HttpNotifyManager::Instance()->AddObserver(this, {NotifyDeleteAppSnapshotInfo, NotifyGetSnapshotList,
                                                          NotifyGetDevSnapshotData, NotifyGrayOrRelease});
    }
    ~AnswerCounter() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse>) override
    {
        ++counts[notifyId];
    }

    QHash<int, int> counts;
};
