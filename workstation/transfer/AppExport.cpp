// SPDX-License-Identifier: Apache-2.0

#include "AppExport.h"

#include <RpaServiceClient/versions/GetVersionDataRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>
#include <WbFoundation/FreeNames.h>

#include <QSet>

#include <algorithm>

namespace
{
constexpr int longestName = 20;

// A released version and one in development may have one name; in the file each has its own.
void MakeNamesDifferent(QVector<VersionServiceVersion>* versions)
{
    QSet<QString> taken;
    for (VersionServiceVersion& version : *versions) {
        version.name = FreeNames::FirstFree(version.name, longestName,
                                            [&taken](const QString& tried) { return taken.contains(tried); });
        taken.insert(version.name);
    }
}
} // namespace

AppExport::AppExport(const AppRecord& record, const QString& file, QObject* parent)
    : AppTransfer(parent), app(record), path(file)
{
    worker.setMaxThreadCount(1);
}

AppExport::~AppExport()
{
    worker.waitForDone();
}

void AppExport::Start()
{
    client.Send(ListVersionsRequest{app.id}, this,
                [this](const VersionServiceResult<QVector<VersionServiceVersion>>& result) {
                    if (hasEnded)
                        return;
                    if (result.success)
                        Begin(result.value);
                    else
                        End(result.errorDesc);
                });
}

void AppExport::Cancel()
{
    End(QStringLiteral("已取消"));
}

void AppExport::Begin(const QVector<VersionServiceVersion>& newestFirst)
{
    if (newestFirst.size() > AppFile::mostVersions) {
        End(QStringLiteral("应用有 %1 个版本，最多导出 %2 个，请先删除不再需要的版本")
                .arg(newestFirst.size())
                .arg(AppFile::mostVersions));
        return;
    }
    versions = newestFirst;
    std::reverse(versions.begin(), versions.end());
    MakeNamesDifferent(&versions);
    const AppFile::Head head{app.name, app.kind, app.tags, versions.size()};
    Write([this, head](QString* problem) { return writer.Begin(path, head, problem); },
          [this] { FetchNext(); });
}

void AppExport::FetchNext()
{
    emit SigProgress(done, versions.size());
    if (done == versions.size()) {
        Write([this](QString* problem) { return writer.Finish(problem); }, [this] { End(QString()); });
        return;
    }
    const VersionServiceVersion version = versions.at(done);
    client.Send(GetVersionDataRequest{version.id}, this,
                [this, version](const VersionServiceResult<QByteArray>& result) {
                    if (hasEnded)
                        return;
                    if (!result.success) {
                        End(QStringLiteral("版本“%1”：%2").arg(version.name, result.errorDesc));
                        return;
                    }
                    const VersionServiceContent content{version.name, version.description, version.apiVersion,
                                                        result.value};
                    Write([this, content](QString* problem) { return writer.Add(content, problem); },
                          [this] {
                              ++done;
                              FetchNext();
                          });
                });
}

void AppExport::Write(const std::function<bool(QString* problem)>& work, const std::function<void()>& then)
{
    worker.start([this, work, then] {
        QString problem;
        const bool isDone = work(&problem);
        QMetaObject::invokeMethod(this, [this, isDone, problem, then] {
            if (!hasEnded)
                isDone ? then() : End(problem);
        });
    });
}

void AppExport::End(const QString& problem)
{
    if (!hasEnded) {
        hasEnded = true;
        emit SigEnded(problem, QString());
    }
}
