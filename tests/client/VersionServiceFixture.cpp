// SPDX-License-Identifier: Apache-2.0

#include "VersionServiceFixture.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbCore/WbGlobalData.h>

#include <QCoreApplication>
#include <QtTest>

using namespace std::chrono_literals;

namespace
{

VersionReplies::Version Describe(const RpaAppSnapshotPtr& snapshot)
{
    VersionReplies::Version version;
    version.id = snapshot->GetId();
    version.appId = snapshot->GetAppId();
    version.name = snapshot->GetName();
    version.description = snapshot->GetDesc();
    version.state = snapshot->GetState();
    return version;
}

QVector<RpaAppSnapshotPtr> ListedVersions()
{
    return {
        VersionServiceFixture::MakeSnapshot(QStringLiteral("v1"), QStringLiteral("版本1"), AppSnapshotDevelop,
                                            QStringLiteral("说明1")),
        VersionServiceFixture::MakeSnapshot(QStringLiteral("v2"), QStringLiteral("版本2"),
                                            AppSnapshotDevelop),
        VersionServiceFixture::MakeSnapshot(QStringLiteral("v3"), QStringLiteral("灰度版"), AppSnapshotGray)};
}

QString IdOfPath(const QByteArray& path)
{
    return QString::fromUtf8(path.split('/').value(4));
}

int RevisionOf(QByteArray etag)
{
    return etag.replace('"', "").toInt();
}

} // namespace

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
}

VersionServiceFixture::VersionServiceFixture()
{
    server.SetScript(&VersionServiceFixture::AnswerRightly);
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(server.GetUrl());
    settings->SetToken(QByteArrayLiteral("token"));
    settings->SetLimits({});
    settings->SetRepeatSpacing({1ms, 1ms});
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    WbGlobalData::Instance()->SetPin(QStringLiteral("author"));
    Manager()->Clear();
    Manager()->SetSnapshots(ListedVersions());
    for (int i = 0; i < Manager()->GetCount(); ++i) {
        const QString id = Manager()->GetSnapshotId(i);
        Manager()->SetBaseRevision(id, 1);
        RpaEditorLogic::Instance()->GetSaveLedger()->Reset(id, QByteArray());
    }
    window.resize(640, 400);
    window.show();
}

VersionServiceFixture::~VersionServiceFixture()
{
    VersionServiceSettings::Instance()->SetLimits({});
}

FaultServer::Reply VersionServiceFixture::AnswerRightly(const FaultServer::Request& request)
{
    VersionReplies::Version version;
    version.content = request.body;
    if (request.path.endsWith("/release")) {
        version.id = IdOfPath(request.path);
        version.state = AppSnapshotGray;
        version.revision = 2;
        return VersionReplies::Released(1, true, QString(), version);
    }
    if (request.method == "POST") {
        version.id = QStringLiteral("v9");
        version.name =
            QString::fromUtf8(QByteArray::fromPercentEncoding(request.headers.value("version-name")));
        return VersionReplies::Saved(201, version);
    }
    if (request.method == "PUT") {
        version.id = IdOfPath(request.path);
        version.revision = RevisionOf(request.headers.value("if-match")) + 1;
        return VersionReplies::Saved(200, version);
    }
    if (request.method == "DELETE")
        return VersionReplies::Deleted();
    if (request.path.endsWith("/data"))
        return FaultServer::Data(VersionReplies::App(), 1);
    QVector<VersionReplies::Version> versions;
    for (const RpaAppSnapshotPtr& snapshot : ListedVersions())
        versions.append(Describe(snapshot));
    return VersionReplies::List(versions);
}

void VersionServiceFixture::UseShortDeadlines()
{
    WbHttpLimits limits;
    limits.connect = 300ms;
    limits.inactivity = 300ms;
    limits.total = 600ms;
    VersionServiceSettings::Instance()->SetLimits(limits);
}

void VersionServiceFixture::Misbehave(FaultServer::Fault fault)
{
    UseShortDeadlines();
    server.SetScript([fault](const FaultServer::Request& request) {
        FaultServer::Reply reply = AnswerRightly(request);
        reply.fault = fault;
        return reply;
    });
}

RpaAppDataPtr VersionServiceFixture::MakeModifiedApp()
{
    auto app = RpaAppDataPtr::create();
    app->InitDefault();
    app->GetAppExtendInfo()->SetAppId(QStringLiteral("app1"));
    app->SetModified(true);
    return app;
}

RpaAppDataPtr VersionServiceFixture::MakeAppThatUses(const QString& command)
{
    RpaAppDataPtr app = MakeModifiedApp();
    RpaStatement statement;
    statement.command = command;
    app->GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {statement});
    return app;
}

RpaAppSnapshotPtr VersionServiceFixture::MakeSnapshot(const QString& id, const QString& name,
                                                      AppSnapshotState state, const QString& desc)
{
    auto snapshot = RpaAppSnapshotPtr::create();
    snapshot->SetId(id);
    snapshot->SetAppId(QStringLiteral("app1"));
    snapshot->SetName(name);
    snapshot->SetDesc(desc);
    snapshot->SetState(state);
    snapshot->SetApiVersion(QStringLiteral("1.0.0"));
    return snapshot;
}

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

RpaSnapshotManager* Manager()
{
    return RpaEditorLogic::Instance()->GetDevSnapshotManager();
}

QSharedPointer<SnapshotResponse> Outcome(bool ok, const QString& error)
{
    auto response = QSharedPointer<SnapshotResponse>::create();
    response->SetOutcome(ok, error);
    return response;
}

void AddFaultRows()
{
    QTest::addColumn<FaultServer::Fault>("fault");
    for (FaultServer::Fault fault : FaultServer::AllFaults())
        QTest::newRow(FaultServer::NameOf(fault)) << fault;
}

void InjectAnswer(int notifyId, const QSharedPointer<IHttpRequest>& request,
                  const QSharedPointer<IHttpResponse>& response)
{
    HttpNotifyManager::Instance()->Notify(notifyId, request, response);
}
