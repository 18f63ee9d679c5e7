// SPDX-License-Identifier: Apache-2.0

#include "SampleInstaller.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <WbCore/WbGlobalData.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

namespace
{
const QString& SampleFolder()
{
    static const QString folder = QStringLiteral(":/samples/");
    return folder;
}

QByteArray ReadFile(const QString& name)
{
    QFile file(SampleFolder() + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

SampleVersion ReadVersion(const QJsonObject& json)
{
    return {json.value(QStringLiteral("name")).toString(),
            json.value(QStringLiteral("description")).toString(),
            json.value(QStringLiteral("data")).toString(), json.value(QStringLiteral("release")).toInt()};
}
} // namespace

SampleInstaller::SampleInstaller(QObject* parent)
    : QObject(parent), client(std::make_unique<VersionServiceClient>())
{
    HttpNotifyManager::Instance()->AddObserver(this, {NotifySaveAppSnapshotInfo, NotifyGrayOrRelease});
}

SampleInstaller::~SampleInstaller()
{
    HttpNotifyManager::Instance()->RemoveAllMessage(this);
}

QVector<SampleApp> SampleInstaller::ReadSamples()
{
    QVector<SampleApp> samples;
    const QJsonArray list = QJsonDocument::fromJson(ReadFile(QStringLiteral("samples.json"))).array();
    for (const QJsonValue& value : list) {
        const QJsonObject json = value.toObject();
        SampleApp app;
        app.name = json.value(QStringLiteral("name")).toString();
        app.kind = json.value(QStringLiteral("kind")).toInt();
        for (const QJsonValue& version : json.value(QStringLiteral("versions")).toArray())
            app.versions << ReadVersion(version.toObject());
        samples << app;
    }
    return samples;
}

void SampleInstaller::Start()
{
    if (running)
        return;
    running = true;
    client->Send(ListAppsRequest{}, this,
                 [this](const VersionServiceResult<QVector<VersionServiceApp>>& result) {
                     if (!result.success || !result.value.isEmpty()) {
                         Finish(result.success);
                         return;
                     }
                     apps.clear();
                     apps.append(ReadSamples().toList());
                     CreateNextApp();
                 });
}

void SampleInstaller::CreateNextApp()
{
    if (apps.isEmpty()) {
        Finish(true);
        return;
    }
    const SampleApp app = apps.dequeue();
    client->Send(CreateAppRequest{app.name, app.kind}, this,
                 [this, app](const VersionServiceResult<VersionServiceApp>& result) {
                     if (!result.success) {
                         Finish(false);
                         return;
                     }
                     appId = result.value.id;
                     versions.clear();
                     releases.clear();
                     versions.append(app.versions.toList());
                     SaveNextVersion();
                 });
}

void SampleInstaller::SaveNextVersion()
{
    if (versions.isEmpty()) {
        ReleaseNext();
        return;
    }
    const SampleVersion& version = versions.head();
    const auto snapshot = RpaAppSnapshotPtr::create();
    snapshot->SetAppId(appId);
    snapshot->SetName(version.name);
    snapshot->SetDesc(version.description);
    snapshot->SetAppData(QString::fromUtf8(ReadFile(version.dataFile)));
    snapshot->SetApiVersion(RpaGlobalDataManager::Instance()->GetApiVersion());
    snapshot->SetPin(WbGlobalData::Instance()->GetPin());
    const auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    identity = QUuid::createUuid().toString();
    request->SetIdentity(identity);
    request->SetSnapshotInfoPtr(snapshot);
    RpaEditorLogic::Instance()->SaveAppSnapshotInfo(request);
}

void SampleInstaller::ReleaseNext()
{
    if (releases.isEmpty()) {
        CreateNextApp();
        return;
    }
    const auto [versionId, type] = releases.dequeue();
    const auto request = QSharedPointer<GrayOrReleaseRequest>::create();
    identity = QUuid::createUuid().toString();
    request->SetIdentity(identity);
    request->SetAppId(appId);
    request->SetSnapshotId(versionId);
    request->SetPublishType(type);
    RpaEditorLogic::Instance()->GrayOrRelease(request);
}

void SampleInstaller::OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                                   QSharedPointer<IHttpResponse> response)
{
    if (!running || request->GetIdentity() != identity)
        return;
    if (!response->IsSuccess()) {
        Finish(false);
        return;
    }
    if (notifyId == NotifyGrayOrRelease) {
        ReleaseNext();
        return;
    }
    const SampleVersion saved = versions.dequeue();
    if (saved.release != 0) {
        const auto* save = qobject_cast<SaveAppSnapshotInfoRequest*>(request.data());
        releases.enqueue({save->GetSnapshotInfoPtr()->GetId(), saved.release});
    }
    SaveNextVersion();
}

void SampleInstaller::Finish(bool complete)
{
    running = false;
    identity.clear();
    // The versions of the samples were never listed by anybody; the next editor starts from its own.
    RpaEditorLogic::Instance()->GetDevSnapshotManager()->Clear();
    emit SigFinished(complete);
}
