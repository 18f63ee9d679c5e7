// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <RpaServiceClient/VersionServiceResult.h>

#include <functional>
#include <memory>

class QObject;
struct WbHttpRequest;

// Speaks to the server of VersionServiceSettings. What can be asked stands in one file each, with its arguments, the
// way it is sent (ToHttp()) and its answer, and how that is read where its type alone does not say it (Read()):
//
//     client->Send(RenameAppRequest{appId, name}, this,
//                  [](const VersionServiceResult<VersionServiceApp>& result) { … });
//
// Each call is answered exactly once, from the event loop, never inside the call, and to nobody but who asked; the
// destructor answers what is outstanding as failed. context, when not null, stands for whoever wants the answer: it is
// not called once it is destroyed, nor by the client's destructor, which mostly runs within that of whoever asked. GUI
// thread only.
class RPASERVICECLIENT_EXPORT VersionServiceClient
{
public:
    template <typename Value>
    using Callback = std::function<void(const VersionServiceResult<Value>& result)>;

    // For the service of VersionServiceSettings.
    VersionServiceClient();
    ~VersionServiceClient();

    VersionServiceClient(const VersionServiceClient&) = delete;
    VersionServiceClient& operator=(const VersionServiceClient&) = delete;

    // Request: one of the files beside this one.
    template <typename Request>
    void Send(const Request& request, QObject* context, const Callback<typename Request::Answer>& callback)
    {
        SendHttp(request.ToHttp(), context, [callback](const WbHttpAnswer& answer) {
            callback(VersionServiceResult<typename Request::Answer>::Of(
                answer, ServiceAnswers::ReaderOf<Request>(0)));
        });
    }

private:
    using Done = std::function<void(const WbHttpAnswer& answer)>;

    void SendHttp(const WbHttpRequest& request, QObject* context, const Done& done);

    class Private;
    const std::unique_ptr<Private> d;
};
