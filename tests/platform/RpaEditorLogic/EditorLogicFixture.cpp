// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/IHttpRequest.h>
#include <OxHttp/IHttpResponse.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QtTest>

using namespace std::chrono_literals;

FaultServer::Reply VersionExamples::Late(FaultServer::Reply reply, std::chrono::milliseconds delay)
{
    reply.delay = delay;
    return reply;
}

FaultServer::Reply VersionExamples::ChangedByAnother()
{
    return FaultServer::Refusal(412, "changed", QStringLiteral("changed"));
}

AnswerRecorder::AnswerRecorder()
{
    HttpNotifyManager::Instance()->AddObserver(this, {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo,
                                                      NotifyDeleteAppSnapshotInfo, NotifyGetSnapshotList,
                                                      NotifyGetDevSnapshotData, NotifyGrayOrRelease});
}

AnswerRecorder::~AnswerRecorder()
{
    HttpNotifyManager::Instance()->RemoveAllMessage(this);
}

void AnswerRecorder::OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                                  QSharedPointer<IHttpResponse> response)
{
    answers.append({notifyId, request, response});
    if (reaction)
        reaction(answers.last());
}

bool AnswerRecorder::WaitFor(int count)
{
    return QTest::qWaitFor([this, count] { return answers.size() >= count; });
}

EditorLogicFixture::EditorLogicFixture()
{
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(server.GetUrl());
    settings->SetToken("token");
    WbHttpLimits limits;
    limits.connect = 1000ms;
    limits.inactivity = 400ms;
    limits.total = 2000ms;
    settings->SetLimits(limits);
    settings->SetRepeatSpacing({20ms, 100ms});
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
}

EditorLogicFixture::~EditorLogicFixture()
{
    Logic()->Forget();
}

VersionReplies::Version EditorLogicFixture::Version(const QString& id, int revision,
                                                    const QByteArray& content)
{
    VersionReplies::Version version;
    version.id = id;
    version.name = QStringLiteral("name of ") + id;
    version.revision = revision;
    version.content = content;
    return version;
}

RpaAppSnapshotPtr EditorLogicFixture::Record(const QString& id, const QString& content, const QString& name)
{
    auto record = RpaAppSnapshotPtr::create();
    record->SetId(id);
    record->SetAppId(QStringLiteral("app1"));
    record->SetName(name);
    record->SetAppData(content);
    record->SetApiVersion(QStringLiteral("1.0.0"));
    return record;
}

void EditorLogicFixture::Save(const RpaAppSnapshotPtr& record)
{
    auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(record);
    Logic()->SaveAppSnapshotInfo(request);
}

void EditorLogicFixture::Update(const RpaAppSnapshotPtr& record)
{
    auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(record);
    Logic()->UpdateAppSnapshotInfo(request);
}

void EditorLogicFixture::Delete(const QString& id)
{
    auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(id);
    Logic()->DeleteAppSnapshotInfo(request);
}

void EditorLogicFixture::List(const QString& appId)
{
    auto request = QSharedPointer<GetSnapshotListRequest>::create();
    request->SetAppId(appId);
    Logic()->GetSnapshotList(request);
}

void EditorLogicFixture::Load(const QString& id)
{
    auto request = QSharedPointer<GetDevSnapshotDataRequest>::create();
    request->SetSnapshotId(id);
    Logic()->GetDevSnapshotData(request);
}

void EditorLogicFixture::Release(const QString& id, int type)
{
    auto request = QSharedPointer<GrayOrReleaseRequest>::create();
    request->SetAppId(QStringLiteral("app1"));
    request->SetSnapshotId(id);
    request->SetPublishType(type);
    Logic()->GrayOrRelease(request);
}

void EditorLogicFixture::GivenVersions(const QVector<VersionReplies::Version>& versions)
{
    const int before = answers.Count();
    server.Enqueue(VersionReplies::List(versions));
    List();
    QVERIFY(answers.WaitFor(before + 1));
    QVERIFY2(answers.LastSucceeded(), qPrintable(answers.LastError()));
}
