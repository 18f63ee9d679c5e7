// SPDX-License-Identifier: Apache-2.0

#include "Dispatcher.h"

#include "../base/Digest.h"
#include "Wire.h"

#include <algorithm>

namespace server
{
namespace
{
using SteadyClock = std::chrono::steady_clock;

constexpr auto slow = std::chrono::seconds(1);

std::vector<QByteArray> LabelsOf(const Router& router)
{
    std::vector<QByteArray> labels;
    for (const Route& route : router.Routes())
        labels.push_back(QByteArray(route.method) + ' ' + route.pattern);
    labels.push_back(QByteArrayLiteral("(none)"));
    return labels;
}

QByteArray TokenOf(const RequestHead& head)
{
    const QByteArray header = head.Header("authorization");
    return header.left(7).toLower() == "bearer " ? header.mid(7).trimmed() : QByteArray();
}

// A terminator on this machine speaks for clients of others.
bool WasForwarded(const RequestHead& head)
{
    return std::any_of(head.headers.begin(), head.headers.end(), [](const auto& header) {
        const QByteArray& name = header.first;
        return name == "forwarded" || name == "via" || name == "x-real-ip" || name.startsWith("x-forwarded");
    });
}

bool NeedsToken(const Route& route)
{
    return route.access == Access::SignedIn || route.access == Access::Administrator;
}

Response Unauthorized()
{
    return Response::Refuse(401, "unauthorized", QStringLiteral("登录已失效，请重新登录。"))
        .With("WWW-Authenticate", "Bearer");
}

Response Busy()
{
    return Response::Refuse(503, "busy", QStringLiteral("服务繁忙，请稍后重试。")).With("Retry-After", "2");
}

std::optional<Response> RefusalByRole(const Account& account, const Route& route)
{
    if (route.access == Access::Administrator && !account.IsAdministrator())
        return Response::Refuse(403, "forbidden", QStringLiteral("您没有执行此操作的权限。"));
    return std::nullopt;
}

Admission AdmissionOf(const Account& account, const Route& route)
{
    return {RefusalByRole(account, route), route.bodyLimit, account.pin};
}
} // namespace

struct Dispatcher::Job
{
    Request request;
    Reply reply;
    Router::Match match;
    SteadyClock::time_point start = SteadyClock::now();
};

Dispatcher::Dispatcher(const Router& theRouter, Sessions& theSessions, Log& theLog, const Limits& limits)
    : router(theRouter), sessions(theSessions), log(theLog),
      metricsTokenHash(limits.metricsToken.isEmpty() ? QByteArray() : Sha256(limits.metricsToken)),
      metrics(LabelsOf(theRouter)), pool(limits.workers, limits.queue)
{
}

std::optional<Response> Dispatcher::RefusalOfHead(const RequestHead& head, const Router::Match& match) const
{
    if (!match.route && match.allowedMethods.isEmpty())
        return Response::Refuse(404, "not-found", QStringLiteral("请求的地址不存在。"));
    if (!match.route)
        return Response::Refuse(405, "method-not-allowed", QStringLiteral("该地址不支持此操作。"))
            .With("Allow", match.allowedMethods);
    if (match.route->access == Access::Monitoring && !MayWatch(head))
        return Response::Refuse(401, "unauthorized",
                                QStringLiteral("查看运行指标需要令牌，或在服务器本机访问。"))
            .With("WWW-Authenticate", "Bearer");
    if (head.contentLength.value_or(0) > match.route->bodyLimit)
        return Response::Refuse(413, "body-too-large", QStringLiteral("内容超过大小上限，无法提交。"));
    if (NeedsToken(*match.route) && TokenOf(head).isEmpty())
        return Unauthorized();
    return std::nullopt;
}

bool Dispatcher::MayWatch(const RequestHead& head) const
{
    const bool knowsToken = !metricsTokenHash.isEmpty() && Sha256(TokenOf(head)) == metricsTokenHash;
    return knowsToken || (head.fromLoopback && !WasForwarded(head));
}

void Dispatcher::Admit(const RequestHead& head, std::function<void(Admission)> decide)
{
    const Router::Match match = router.Find(head.method, head.path);
    if (auto refusal = RefusalOfHead(head, match)) {
        metrics.Count(match.route ? match.index : router.Routes().size(), refusal->status, {});
        log.Write(LogLevel::Info, "refused-by-head", [&](JsonText& line) {
            line.Member("method", QString::fromLatin1(head.method))
                .Member("path", QString::fromUtf8(head.path.left(200)))
                .Member("status", refusal->status);
        });
        return decide({std::move(refusal), 0, {}});
    }
    // Nobody without the right to it may make the server take in a body.
    if (!head.hasBody || !NeedsToken(*match.route))
        return decide({std::nullopt, match.route->bodyLimit, {}});
    const QByteArray token = TokenOf(head);
    if (const auto account = sessions.AccountWithoutStore(token))
        return decide(AdmissionOf(*account, *match.route));
    AskStore(token, *match.route, decide);
}

void Dispatcher::AskStore(const QByteArray& token, const Route& route,
                          const std::function<void(Admission)>& decide)
{
    const auto ask = [this, token, &route, decide] {
        try {
            const auto session = sessions.Find(token);
            decide(session ? AdmissionOf(session->account, route) : Admission{Unauthorized(), 0, {}});
        } catch (const StoreError&) {
            decide({ResponseForFailure(std::current_exception()), 0, {}});
        }
    };
    if (!pool.TryRun(ask))
        decide({Busy(), 0, {}});
}

void Dispatcher::Handle(Request request, Reply reply)
{
    const auto job = std::make_shared<Job>();
    job->match = router.Find(request.method, request.path);
    job->request = std::move(request);
    job->request.pathValues = job->match.pathValues;
    job->reply = std::move(reply);
    if (job->match.route->isImmediate)
        Run(job);
    else if (!pool.TryRun([this, job] { Run(job); }))
        Answer(*job, Busy());
}

std::optional<Response> Dispatcher::Authenticate(Request& request, const Route& route)
{
    if (!NeedsToken(route))
        return std::nullopt;
    request.token = TokenOf(request);
    const auto session = sessions.Find(request.token);
    if (!session)
        return Unauthorized();
    request.account = session->account;
    return RefusalByRole(session->account, route);
}

void Dispatcher::Run(const std::shared_ptr<Job>& job)
{
    try {
        const Route& route = *job->match.route;
        if (auto refusal = Authenticate(job->request, route))
            return Answer(*job, std::move(*refusal));
        route.handler(job->request, [this, job](Response response) { Answer(*job, std::move(response)); });
    } catch (...) {
        Answer(*job, ResponseForFailure(std::current_exception()));
    }
}

void Dispatcher::Answer(const Job& job, Response response)
{
    const auto latency =
        std::chrono::duration_cast<std::chrono::microseconds>(SteadyClock::now() - job.start);
    metrics.Count(job.match.index, response.status, latency);
    Note(job, response, latency);
    if (job.request.account)
        response.account = job.request.account->pin;
    job.reply(std::move(response));
}

// Reads that went well are not logged: they are the bulk and the figures count them.
void Dispatcher::Note(const Job& job, const Response& response, std::chrono::microseconds latency)
{
    const bool plainRead = job.request.method == "GET" && response.status < 400 && latency < slow;
    const LogLevel level = response.status >= 500 ? LogLevel::Error
                           : plainRead            ? LogLevel::Debug
                                                  : LogLevel::Info;
    log.Write(level, "request", [&](JsonText& line) {
        line.Member("method", QString::fromLatin1(job.request.method))
            .Member("path", QString::fromUtf8(job.request.path))
            .Member("status", response.status)
            .Member("micros", static_cast<qint64>(latency.count()));
        if (job.request.account)
            line.Member("pin", job.request.account->pin);
        if (!job.request.body.isEmpty())
            line.Member("bytes", static_cast<qint64>(job.request.body.size()));
        if (!response.cause.isEmpty())
            line.Member("cause", response.cause.left(1000));
        if (response.status >= 400)
            line.Member("answer", QString::fromUtf8(response.body.left(400)));
    });
}

void Dispatcher::OnRefusedByLimit(int status)
{
    metrics.Count(router.Routes().size(), status, {});
    log.Write(LogLevel::Warning, "refused-by-limit",
              [status](JsonText& line) { line.Member("status", status); });
}

void Dispatcher::OnAcceptPaused(const std::string& reason)
{
    log.Write(LogLevel::Warning, "accept-paused",
              [&reason](JsonText& line) { line.Member("reason", QString::fromStdString(reason)); });
}

namespace
{
Response ResponseForFault(StoreFault fault)
{
    switch (fault) {
    case StoreFault::Unavailable:
        return Response::Refuse(503, "store-unavailable",
                                QStringLiteral("存储暂时不可用，内容未保存，请稍后重试。"))
            .With("Retry-After", "5");
    case StoreFault::Full:
        return Response::Refuse(
            507, "disk-full",
            QStringLiteral("磁盘已满，内容没有保存。请联系管理员清理服务器的磁盘，然后重试。"));
    case StoreFault::Conflict:
        return Response::Refuse(409, "conflict", QStringLiteral("与其他操作冲突，请重试。"));
    case StoreFault::Corrupt:
        return Response::Refuse(500, "damaged",
                                QStringLiteral("该版本在服务器上的内容已损坏，请联系管理员。"));
    case StoreFault::Internal:
        break;
    }
    return Response::Refuse(500, "internal", QStringLiteral("服务器内部错误，请稍后重试。"));
}

Response With(Response response, const std::exception& cause)
{
    response.cause = QString::fromUtf8(cause.what());
    return response;
}
} // namespace

Response ResponseForFailure(const std::exception_ptr& failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const Refusal& refusal) {
        return wire::Refused(refusal);
    } catch (const StoreError& error) {
        return With(ResponseForFault(error.Fault()), error);
    } catch (const std::exception& error) {
        return With(ResponseForFault(StoreFault::Internal), error);
    }
}
} // namespace server
