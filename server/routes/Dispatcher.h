// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../accounts/Sessions.h"
#include "../base/Metrics.h"
#include "../base/TaskPool.h"
#include "../http/HttpServer.h"
#include "../http/Router.h"

namespace server
{
// Between the network and the routes: finds the route, asks who is calling, runs the handler on the worker
// threads, counts and logs the answer.
class Dispatcher : public IHttpHandler
{
public:
    struct Limits
    {
        int workers = 4;
        std::size_t queue = 4000; // requests that may wait for a worker
        QByteArray metricsToken;  // empty: nobody but this machine reads the figures
    };

    Dispatcher(const Router& router, Sessions& sessions, Log& log, const Limits& limits);

    void Admit(const RequestHead& head, std::function<void(Admission)> decide) override;
    void Handle(Request request, Reply reply) override;
    void OnRefusedByLimit(int status) override;
    void OnAcceptPaused(const std::string& reason) override;

    Metrics& Figures() { return metrics; }

private:
    struct Job;

    std::optional<Response> RefusalOfHead(const RequestHead& head, const Router::Match& match) const;
    void AskStore(const QByteArray& token, const Route& route, const std::function<void(Admission)>& decide);
    bool MayWatch(const RequestHead& head) const;
    std::optional<Response> Authenticate(Request& request, const Route& route);
    void Run(const std::shared_ptr<Job>& job);
    void Answer(const Job& job, Response response);
    void Note(const Job& job, const Response& response, std::chrono::microseconds latency);

    const Router& router;
    Sessions& sessions;
    Log& log;
    const QByteArray metricsTokenHash; // empty: there is no such token
    Metrics metrics;
    TaskPool pool; // last: its threads use everything above
};

// The answer for a refusal and for a failure of the store.
Response ResponseForFailure(const std::exception_ptr& failure);
} // namespace server
