// SPDX-License-Identifier: Apache-2.0

#include "SampleInstaller.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <RpaServiceClient/versions/CreateVersionRequest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

QVector<SampleApp> SampleInstaller::ReadSamples()
{
    QVector<SampleApp> samples;
    const QJsonArray list = QJsonDocument::fromJson(ReadFile(QStringLiteral("samples.json"))).array();
    for (const QJsonValue& value : list) {
        const QJsonObject json = value.toObject();
        SampleApp app;
        app.name = json.value(QStringLiteral("name")).toString();
        app.kind = json.value(QStringLiteral("kind")).toInt();
        for (const QJsonValue version : json.value(QStringLiteral("versions")).toArray())
            app.versions << ReadVersion(version.toObject());
        samples << app;
    }
    return samples;
}

template <typename Request, typename Next>
void SampleInstaller::Send(const Request& request, const Next& next)
{
    client.Send(request, this, [this, next](const auto& result) {
        if (result.success)
            next(result.value);
        else
            Finish(false);
    });
}

void SampleInstaller::Start()
{
    if (running)
        return;
    running = true;
    Send(ListAppsRequest{}, [this](const QVector<VersionServiceApp>& present) {
        if (!present.isEmpty()) {
            Finish(true);
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
    Send(CreateAppRequest{app.name, app.kind}, [this, app](const VersionServiceApp& made) {
        appId = made.id;
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
    const SampleVersion version = versions.dequeue();
    const QString apiVersion = RpaGlobalDataManager::Instance()->GetApiVersion();
    const VersionServiceContent content{version.name, version.description, apiVersion,
                                        ReadFile(version.dataFile)};
    Send(CreateVersionRequest{appId, content}, [this, version](const VersionServiceVersion& saved) {
        if (version.release != 0)
            releases.enqueue({saved.id, version.release, saved.revision});
        SaveNextVersion();
    });
}

void SampleInstaller::ReleaseNext()
{
    if (releases.isEmpty())
        CreateNextApp();
    else
        Send(releases.dequeue(), [this](const VersionServiceReleaseOutcome&) { ReleaseNext(); });
}

void SampleInstaller::Finish(bool complete)
{
    running = false;
    emit SigFinished(complete);
}
