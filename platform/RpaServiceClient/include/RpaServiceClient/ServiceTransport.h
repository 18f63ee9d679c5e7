// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <RpaServiceClient/TriedAnswer.h>
#include <WbHttpModule/WbHttpClient.h>

#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <map>
#include <memory>

// Sends requests to the version service and answers each exactly once, from the event loop or, at the latest,
// in Shutdown(). A request that met a broken connection or a busy server is sent again by itself, with the
// headers it had (so with its idempotency key), as long as that is quick. While the service is away requests
// wait for it, and follow it to where it comes back.
class RPASERVICECLIENT_EXPORT ServiceTransport
{
public:
    using Done = std::function<void(const TriedAnswer& answer)>;

    // For the service of VersionServiceSettings. The destructor is a Shutdown().
    ServiceTransport();
    ~ServiceTransport();

    // done is called on the GUI thread.
    void Send(const WbHttpRequest& request, Done done);
    // Answers without sending, from the event loop like any other.
    void AnswerLocally(const WbHttpAnswer& answer, Done done);

    // Answers all that is outstanding as cancelled, requests sent meanwhile included. The next Send() starts
    // anew.
    void Shutdown();

private:
    struct Call
    {
        WbHttpRequest request;
        Done done;
        int tries = 0;
        bool mayBeDone = false; // by one of them
        QByteArray sentDigest;
        QElapsedTimer age;
        // What it was made for, and where that was then.
        quint64 identity = 0;
        quint64 place = 0;
        bool isHeld = false; // until the service is back
    };

    quint64 Add(Done done);
    void Try(quint64 id);
    bool FindService(quint64 id);
    void Hold(quint64 id);
    void TryHeld();
    void OnAnswer(quint64 id, const WbHttpAnswer& answer);
    bool IsWorthAnotherTry(const Call& call, const WbHttpAnswer& answer) const;
    void Finish(quint64 id, const WbHttpAnswer& answer);

    std::map<quint64, Call> calls;
    quint64 lastId = 0;
    bool shuttingDown = false;
    std::unique_ptr<QObject> context; // of timers and posted answers
    std::unique_ptr<WbHttpClient> client;
};
