#include "ServiceTransport_p.h"

#include <RpaEditorLogic/VersionServiceSettings.h>

#include <QTimer>

#include <array>
#include <chrono>

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
    calls[id].request = request;
    Try(id);
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
    if (position == calls.end() || shuttingDown)
        return;
    Call& call = position->second;
    ++call.tries;
    WbHttpRequest request = call.request;
    request.limits.total -= std::chrono::milliseconds(call.age.elapsed());
    client->Send(request, [this, id](const WbHttpAnswer& answer) { OnAnswer(id, answer); });
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
