// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FaultServer.h"
#include "ToastWatcher.h"
#include "VersionReplies.h"

#include <OxHttp/HttpObserverBase.h>
#include <OxHttp/IHttpResponse.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorLogic/SnapshotRequests.h>

#include <QSharedPointer>
#include <QVector>
#include <QWidget>

class RpaSnapshotManager;

// One answer as the notification manager delivered it.
struct DeliveredAnswer
{
    int notifyId = 0;
    QSharedPointer<IHttpRequest> request;
    QSharedPointer<IHttpResponse> response;
};

// Hears every version answer of the process, whoever asked.
class AnswerRecorder : public HttpObserverBase
{
public:
    AnswerRecorder();
    ~AnswerRecorder() override;

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                      QSharedPointer<IHttpResponse> response) override;

    QVector<DeliveredAnswer> answers;
};

// The real request library in front of a scripted server: the app "app1" with the develop versions "v1"
// ("版本1", description "说明1") and "v2" ("版本2") and the gray version "v3" ("灰度版"), a signed-in author,
// and a window for the notices. The server answers everything rightly until a test says otherwise.
class VersionServiceFixture
{
public:
    VersionServiceFixture();
    ~VersionServiceFixture();

    // What the server answers when it behaves.
    static FaultServer::Reply AnswerRightly(const FaultServer::Request& request);

    // Short deadlines, so that silence is over soon.
    static void UseShortDeadlines();

    // Short deadlines, and a server that answers everything with this fault.
    void Misbehave(FaultServer::Fault fault);

    // A default app of "app1" with unsaved work.
    static RpaAppDataPtr MakeModifiedApp();
    // The same with a statement of this command in its process.
    static RpaAppDataPtr MakeAppThatUses(const QString& command);

    static RpaAppSnapshotPtr MakeSnapshot(const QString& id, const QString& name, AppSnapshotState state,
                                          const QString& desc = QString());

    FaultServer server;
    QWidget window;
    ToastWatcher toasts;
    AnswerRecorder recorder;
};

QString Text(const char* utf8);

// The versions that are listed.
RpaSnapshotManager* Manager();

// An answer that a test makes up.
QSharedPointer<SnapshotResponse> Outcome(bool ok, const QString& error = QString());

// The column "fault" with a row for every fault of the server.
void AddFaultRows();

// Hands an answer to the observers as the request library would.
void InjectAnswer(int notifyId, const QSharedPointer<IHttpRequest>& request,
                  const QSharedPointer<IHttpResponse>& response);

// An answer whose success changes with each look: the first look succeeds, the next fails.
class FickleResponse : public IHttpResponse
{
    Q_OBJECT

public:
    bool IsSuccess() const override { return ++looks == 1; }
    QString GetErrorDesc() const override { return QStringLiteral("第二次检查失败"); }

private:
    mutable int looks = 0;
};
