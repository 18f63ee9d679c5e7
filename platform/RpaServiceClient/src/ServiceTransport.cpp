// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceTransport.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QTimer>

#include <array>
#include <chrono>
#include <utility>
#include <vector>

namespace
{
using namespace std::chrono_literals;

constexpr std::array<std::chrono::milliseconds, 2> waitsBeforeRepeat = {250ms, 1000ms};
// A failure that took longer than this is reported rather than repeated: the author is waiting.
constexpr std::chrono::milliseconds repeatWithin = 5s;

bool IsSurelyUndone(const WbHttpAnswer& answer)
{
    switch (answer.error) {
    case WbHttpError::None:
        return answer.status >= 400 && answer.status < 500;
    case WbHttpError::BadRequest:
    case WbHttpError::CannotConnect:
    case WbHttpError::TlsFailed:
        return true;
    default:
        return false;
    }
}

WbHttpAnswer AwayAnswer()
{
    WbHttpAnswer answer;
    answer.error = WbHttpError::CannotConnect;
    answer.errorText = QStringLiteral("版本服务尚未恢复，请稍后重试");
    return answer;
}

WbHttpAnswer CancelledAnswer()
{
    WbHttpAnswer answer;
    answer.error = WbHttpError::Cancelled;
    answer.errorText = QStringLiteral("请求已取消");
    return answer;
}
} // namespace

ServiceTransport::ServiceTransport() = default;

ServiceTransport::~ServiceTransport()
{
    Shutdown();
}

void ServiceTransport::Send(const WbHttpRequest& request, Done done)
{
    const quint64 id = Add(std::move(done));
    const auto* settings = VersionServiceSettings::Instance();
    Call& call = calls[id];
    call.request = request;
    call.identity = settings->GetIdentityNumber();
    call.place = settings->GetPlaceNumber();
    if (settings->GetWhereabouts() == VersionServiceSettings::Whereabouts::Known)
        Try(id);
    else if (!shuttingDown) // is answered from the event loop, whatever becomes of it
        QMetaObject::invokeMethod(
            context.get(), [this, id] { Try(id); }, Qt::QueuedConnection);
}

void ServiceTransport::AnswerLocally(const WbHttpAnswer& answer, Done done)
{
    const quint64 id = Add(std::move(done));
    if (!shuttingDown)
        QMetaObject::invokeMethod(
            context.get(), [this, id, answer] { Finish(id, answer); }, Qt::QueuedConnection);
}

quint64 ServiceTransport::Add(Done done)
{
    if (!shuttingDown && !client) {
        context = std::make_unique<QObject>();
        QObject::connect(
            VersionServiceSettings::Instance(), &VersionServiceSettings::SigChanged, context.get(),
            [this] { TryHeld(); }, Qt::QueuedConnection);
        client = std::make_unique<WbHttpClient>();
    }
    Call call;
    call.done = std::move(done);
    call.age.start();
    calls.emplace(++lastId, std::move(call));
    return lastId;
}

void ServiceTransport::Try(quint64 id)
{
    const auto position = calls.find(id);
    if (position == calls.end() || shuttingDown || !FindService(id))
        return;
    Call& call = position->second;
    call.isHeld = false;
    ++call.tries;
    WbHttpRequest request = call.request;
    request.limits.total -= std::chrono::milliseconds(call.age.elapsed());
    client->Send(request, [this, id](const WbHttpAnswer& answer) { OnAnswer(id, answer); });
}

// Whether the request may be sent now. Its address is not used again once the service has left it: whoever
// listens there by then is a stranger.
bool ServiceTransport::FindService(quint64 id)
{
    Call& call = calls.at(id);
    const auto* settings = VersionServiceSettings::Instance();
    const bool isKnown = settings->GetWhereabouts() == VersionServiceSettings::Whereabouts::Known;
    if (isKnown && call.place == settings->GetPlaceNumber())
        return true;
    if (call.identity != settings->GetIdentityNumber() ||
        settings->GetWhereabouts() == VersionServiceSettings::Whereabouts::Lost) {
        Finish(id, AwayAnswer());
        return false;
    }
    if (!isKnown) {
        Hold(id);
        return false;
    }
    const QUrl service = settings->GetBaseUrl();
    call.request.url.setScheme(service.scheme());
    call.request.url.setHost(service.host());
    call.request.url.setPort(service.port());
    if (!call.request.bearerToken.isEmpty())
        call.request.bearerToken = settings->GetToken();
    call.place = settings->GetPlaceNumber();
    return true;
}

void ServiceTransport::Hold(quint64 id)
{
    Call& call = calls.at(id);
    if (std::exchange(call.isHeld, true))
        return;
    const auto left = call.request.limits.total - std::chrono::milliseconds(call.age.elapsed());
    QTimer::singleShot(std::max(left, 0ms), context.get(), [this, id] {
        const auto position = calls.find(id);
        if (position != calls.end() && position->second.isHeld)
            Finish(id, AwayAnswer());
    });
}

void ServiceTransport::TryHeld()
{
    std::vector<quint64> held;
    for (const auto& [id, call] : calls)
        if (call.isHeld)
            held.push_back(id);
    for (const quint64 id : held)
        Try(id);
}

void ServiceTransport::OnAnswer(quint64 id, const WbHttpAnswer& answer)
{
    const auto position = calls.find(id);
    if (position == calls.end())
        return;
    Call& call = position->second;
    call.mayBeDone = call.mayBeDone || !IsSurelyUndone(answer);
    if (call.sentDigest.isEmpty())
        call.sentDigest = answer.sentDigest;
    if (shuttingDown || !IsWorthAnotherTry(call, answer)) {
        Finish(id, answer);
        return;
    }
    QTimer::singleShot(waitsBeforeRepeat.at(size_t(call.tries - 1)), context.get(), [this, id] { Try(id); });
}

bool ServiceTransport::IsWorthAnotherTry(const Call& call, const WbHttpAnswer& answer) const
{
    const bool isPassing = answer.error == WbHttpError::CannotConnect ||
                           answer.error == WbHttpError::ConnectionLost ||
                           (answer.error == WbHttpError::None && answer.status == 503);
    if (!isPassing || size_t(call.tries) > waitsBeforeRepeat.size())
        return false;
    const auto wait = waitsBeforeRepeat.at(size_t(call.tries - 1));
    const auto afterWait = std::chrono::milliseconds(call.age.elapsed()) + wait;
    return afterWait < repeatWithin && afterWait < call.request.limits.total;
}

void ServiceTransport::Finish(quint64 id, const WbHttpAnswer& answer)
{
    const auto position = calls.find(id);
    if (position == calls.end())
        return;
    const Call call = std::move(position->second);
    calls.erase(position);
    auto* settings = VersionServiceSettings::Instance();
    // A late refusal of an earlier session's token says nothing about the current one.
    const bool isRejected = answer.error == WbHttpError::None && answer.status == 401 &&
                            !call.request.bearerToken.isEmpty() &&
                            call.request.bearerToken == settings->GetToken();
    TriedAnswer tried{answer, call.mayBeDone};
    if (tried.sentDigest.isEmpty())
        tried.sentDigest = call.sentDigest;
    call.done(tried);
    if (isRejected)
        emit settings->SigTokenRejected();
}

void ServiceTransport::Shutdown()
{
    shuttingDown = true;
    client.reset();
    context.reset();
    while (!calls.empty())
        Finish(calls.begin()->first, CancelledAnswer());
    shuttingDown = false;
}
