// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FaultServer.h"
#include "VersionReplies.h"

#include <OxHttp/HttpObserverBase.h>
#include <RpaEditorLogic/RpaEditorLogic.h>

#include <QString>
#include <QVector>

#include <chrono>
#include <functional>

// What the tests save, and answers that several of them script.
namespace VersionExamples
{
using Fault = FaultServer::Fault;

inline const QString v1 = QStringLiteral("v1");
inline const QString v2 = QStringLiteral("v2");
inline const QString text1 = QString::fromUtf8(VersionReplies::App("\"n\":1"));
inline const QString text2 = QString::fromUtf8(VersionReplies::App("\"n\":2"));

FaultServer::Reply Late(FaultServer::Reply reply,
                        std::chrono::milliseconds delay = std::chrono::milliseconds(60));
FaultServer::Reply ChangedByAnother();
} // namespace VersionExamples

// Hears every answer of the version requests.
class AnswerRecorder : public HttpObserverBase
{
public:
    struct Answer
    {
        int notifyId = 0;
        QSharedPointer<IHttpRequest> request;
        QSharedPointer<IHttpResponse> response;
    };

    AnswerRecorder();
    ~AnswerRecorder() override;

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                      QSharedPointer<IHttpResponse> response) override;

    // Waits until so many answers have come; false after five seconds.
    bool WaitFor(int count);
    int Count() const { return answers.size(); }
    const Answer& Last() const { return answers.last(); }
    const Answer& At(int index) const { return answers.at(index); }
    bool LastSucceeded() const { return !answers.isEmpty() && answers.last().response->IsSuccess(); }
    QString LastError() const
    {
        return answers.isEmpty() ? QString() : answers.last().response->GetErrorDesc();
    }

    // Runs inside the delivery.
    std::function<void(const Answer&)> reaction;

private:
    QVector<Answer> answers;
};

// The request library against a scripted server, with short deadlines and nothing left over from the test
// before.
class EditorLogicFixture
{
public:
    EditorLogicFixture();
    ~EditorLogicFixture();

    // A version as the tests use it.
    static VersionReplies::Version Version(const QString& id, int revision = 1,
                                           const QByteArray& content = "{}");
    // A listed record filled as an editor fills it for an overwrite.
    static RpaAppSnapshotPtr Record(const QString& id, const QString& content,
                                    const QString& name = QStringLiteral("版本1"));

    // Each sends one request; the answer goes to the recorder.
    void Save(const RpaAppSnapshotPtr& record);
    void Update(const RpaAppSnapshotPtr& record);
    void Delete(const QString& id);
    void List(const QString& appId = QStringLiteral("app1"));
    void Load(const QString& id);
    void Release(const QString& id, int type);

    // The server lists these versions, and the manager shows them.
    void GivenVersions(const QVector<VersionReplies::Version>& versions);

    RpaEditorLogic* Logic() const { return RpaEditorLogic::Instance(); }

    FaultServer server;
    AnswerRecorder answers;
};
