// SPDX-License-Identifier: Apache-2.0

#include "AppImport.h"

#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/DeleteAppRequest.h>
#include <RpaServiceClient/apps/PurgeAppRequest.h>
#include <RpaServiceClient/apps/SetTagsRequest.h>
#include <RpaServiceClient/versions/CreateVersionRequest.h>

AppImport::AppImport(const QString& file, QObject* parent) : AppTransfer(parent), path(file)
{
    worker.setMaxThreadCount(1);
}

AppImport::~AppImport()
{
    worker.waitForDone();
}

void AppImport::Start()
{
    Read([this](QString* problem) { return AppFile::Check(path, &head, problem); }, [this] { Create(); });
}

void AppImport::Cancel()
{
    isCancelled = true; // noticed at the next step, so that nothing is under way when it is taken away
}

void AppImport::Create()
{
    emit SigProgress(0, head.versions);
    client.Send(CreateAppRequest{head.name, head.kind, true}, this,
                [this](const VersionServiceResult<VersionServiceApp>& result) {
                    if (!result.success) {
                        End(result.errorDesc);
                        return;
                    }
                    appId = result.value.id;
                    SetTags();
                });
}

void AppImport::SetTags()
{
    const auto begin = [this] {
        Read([this](QString* problem) { return reader.Open(path, &head, problem); }, [this] { ReadNext(); });
    };
    if (head.tags.isEmpty()) {
        begin();
        return;
    }
    client.Send(SetTagsRequest{appId, head.tags}, this,
                [this, begin](const VersionServiceResult<VersionServiceApp>& result) {
                    result.success ? begin() : GiveUp(result.errorDesc);
                });
}

void AppImport::ReadNext()
{
    emit SigProgress(done, head.versions);
    if (done == head.versions) {
        End(QString());
        return;
    }
    Read([this](QString* problem) { return reader.Next(&next, problem); }, [this] { Send(next); });
}

void AppImport::Send(const VersionServiceContent& version)
{
    client.Send(CreateVersionRequest{appId, version}, this,
                [this, name = version.name](const VersionServiceResult<VersionServiceVersion>& result) {
                    if (!result.success) {
                        GiveUp(QStringLiteral("版本“%1”：%2").arg(name, result.errorDesc));
                        return;
                    }
                    ++done;
                    ReadNext();
                });
}

void AppImport::Read(const std::function<bool(QString* problem)>& work, const std::function<void()>& then)
{
    worker.start([this, work, then] {
        QString problem;
        const bool isDone = work(&problem);
        QMetaObject::invokeMethod(this, [this, isDone, problem, then] {
            if (isCancelled || !isDone)
                GiveUp(isCancelled ? QStringLiteral("已取消") : problem);
            else
                then();
        });
    });
}

// Half an app is worse than none.
void AppImport::GiveUp(const QString& problem)
{
    if (appId.isEmpty()) {
        End(problem);
        return;
    }
    client.Send(DeleteAppRequest{appId}, this,
                [this, problem](const VersionServiceResult<VersionServiceNothing>& result) {
                    if (!result.success) {
                        End(problem + QStringLiteral("。已导入的部分没有能够删除，请在列表中删除该应用"));
                        return;
                    }
                    client.Send(PurgeAppRequest{appId}, this,
                                [this, problem](const VersionServiceResult<VersionServiceNothing>&) {
                                    End(problem);
                                });
                });
}

void AppImport::End(const QString& problem)
{
    if (!hasEnded) {
        hasEnded = true;
        emit SigEnded(problem, problem.isEmpty() ? appId : QString());
    }
}
