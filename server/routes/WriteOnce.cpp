// SPDX-License-Identifier: Apache-2.0

#include "WriteOnce.h"

#include "../base/Clock.h"
#include "../base/Digest.h"
#include "Dispatcher.h"
#include "Wire.h"

#include <algorithm>

namespace server
{
namespace
{
const char* const meaningfulHeaders[] = {"if-match", "version-name", "version-description", "version-api"};

bool IsKey(const QByteArray& key)
{
    const auto printable = [](char c) { return c > 0x20 && c < 0x7f; };
    return key.size() >= 8 && key.size() <= 64 && std::all_of(key.begin(), key.end(), printable);
}

// What makes two requests the same request.
QByteArray FingerprintOf(const Request& request)
{
    QByteArray text = request.method + '\n' + request.path + '\n';
    for (const char* name : meaningfulHeaders)
        text += request.Header(name) + '\n';
    // App data has been checked against its digest, so its digest may stand for it.
    const QByteArray digest = ParseContentDigest(request.Header("content-digest"));
    return Sha256(text + (digest.isEmpty() ? Sha256(request.body) : digest));
}

Response ResponseOf(const StoredAnswer& answer)
{
    Response response =
        answer.body.isEmpty() ? Response::Empty(answer.status) : Response::Json(answer.status, answer.body);
    if (!answer.etag.isEmpty())
        response.With("ETag", answer.etag);
    return response;
}

// An operation on an app, a version or an invitation stays within its app. Which app a code belongs to, and
// whether a name is free, is only known later: what has no id in its path may touch anything.
QStringList TouchedBy(const Request& request, const QByteArray& key)
{
    QStringList touched;
    for (const QString& id : request.pathValues)
        touched << id;
    if (!touched.isEmpty())
        touched << request.account->pin + QLatin1Char(' ') + QString::fromLatin1(key);
    return touched;
}

Response AnswerOf(const std::function<Response(Transaction&)>& act, Transaction& transaction)
{
    try {
        return act(transaction);
    } catch (const Refusal& refusal) {
        return wire::Refused(refusal);
    }
}

std::function<void(const std::exception_ptr&)> Answering(const Reply& reply,
                                                         const std::shared_ptr<Response>& answer)
{
    return [reply, answer](const std::exception_ptr& failure) {
        reply(failure ? ResponseForFailure(failure) : std::move(*answer));
    };
}

Response KeyReused()
{
    return Response::Refuse(409, "key-reused", QStringLiteral("该请求标识已用于其他请求，请重试。"));
}
} // namespace

void WriteOnce(Store& store, const Request& request, std::function<Response(Transaction&)> act,
               const Reply& reply, Reach reach)
{
    const QByteArray key = request.Header("idempotency-key");
    if (!IsKey(key))
        throw Refusal{400, "key-required", QStringLiteral("请求缺少标识（Idempotency-Key）。")};

    const auto answer = std::make_shared<Response>();
    const auto once = [answer, act = std::move(act), key, pin = request.account->pin,
                       fingerprint = FingerprintOf(request)](Transaction& transaction) {
        if (const auto known = transaction.FindAnswer(pin, key)) {
            *answer = known->fingerprint == fingerprint ? ResponseOf(*known) : KeyReused();
            return;
        }
        *answer = AnswerOf(act, transaction);
        transaction.InsertAnswer(
            pin, key, {fingerprint, answer->status, answer->Header("ETag"), answer->body}, SteadyNowMs());
    };
    const QStringList touched = reach == Reach::OneApp ? TouchedBy(request, key) : QStringList();
    if (!store.Submit({once, Answering(reply, answer), request.body.size(), touched}))
        reply(
            Response::Refuse(503, "busy", QStringLiteral("服务繁忙，请稍后重试。")).With("Retry-After", "2"));
}

void WriteAgain(Store& store, std::function<Response(Transaction&)> act, const Reply& reply,
                const QStringList& touched)
{
    const auto answer = std::make_shared<Response>();
    const auto write = [answer, act = std::move(act)](Transaction& transaction) {
        *answer = AnswerOf(act, transaction);
    };
    if (!store.Submit({write, Answering(reply, answer), 0, touched}))
        throw StoreError(StoreFault::Unavailable, QStringLiteral("too many writes wait"));
}
} // namespace server
