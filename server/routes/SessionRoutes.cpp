// SPDX-License-Identifier: Apache-2.0

#include "../accounts/PasswordRules.h"
#include "../accounts/Passwords.h"
#include "Dispatcher.h"
#include "Services.h"
#include "Wire.h"

#include <QJsonValue>

namespace server
{
namespace
{
QByteArray SessionText(const SignedIn& session, const QByteArray& token)
{
    JsonText text;
    text.BeginObject();
    if (!token.isEmpty())
        text.Member("token", QString::fromLatin1(token));
    wire::Append(text.Key("account"), session.account);
    return text.Member("expiresAt", session.expiresAt).EndObject().Take();
}

Response BadCredentials()
{
    return Response::Refuse(401, "bad-credentials", QStringLiteral("账号或密码不正确。"));
}

Response TooManyTries(int seconds)
{
    return Response::Refuse(429, "too-many-tries",
                            QStringLiteral("登录尝试过于频繁，请 %1 秒后再试。").arg(seconds))
        .With("Retry-After", QByteArray::number(seconds));
}

struct Credentials
{
    QString pin;
    QByteArray password;
    SessionLife life;
    QByteArray address; // where they come from
};

// On a thread of the password pool.
Response SignIn(Services& services, const Credentials& given)
{
    try {
        if (!VerifyPassword(services.store.PasswordHashOf(given.pin), given.password))
            return BadCredentials();
        const auto account = services.store.FindAccount(given.pin);
        if (!account)
            return BadCredentials();
        services.loginLimit.Succeeded(given.pin, given.address);
        QByteArray token;
        const SignedIn session = services.sessions.Open(*account, given.life, token);
        return Response::Json(201, SessionText(session, token));
    } catch (...) {
        return ResponseForFailure(std::current_exception());
    }
}

void OpenSession(Services& services, const Request& request, const Reply& reply)
{
    const QJsonObject object = wire::SmallObject(request);
    const QString pin = object.value(QLatin1String("account")).toString();
    const QByteArray password = object.value(QLatin1String("password")).toString().toUtf8();
    const SessionLife life =
        object.value(QLatin1String("stay")).toBool() ? SessionLife::Staying : SessionLife::Usual;
    if (pin.isEmpty() || pin.size() > 64 || password.isEmpty() || password.size() > longestPasswordBytes)
        return reply(BadCredentials());
    const auto now = std::chrono::steady_clock::now();
    if (const int seconds = services.loginLimit.SecondsToWait(pin, request.peer, now))
        return reply(TooManyTries(seconds));
    const Credentials given{pin, password, life, request.peer};
    // Guesses from very many addresses fill one queue; whoever has signed in from there before has the other.
    const auto queue =
        services.loginLimit.IsFamiliar(pin, request.peer) ? TaskPool::Queue::Known : TaskPool::Queue::Common;
    const bool queued =
        services.passwordPool.TryRun([&services, given, reply] { reply(SignIn(services, given)); }, queue);
    if (!queued)
        reply(
            Response::Refuse(503, "busy", QStringLiteral("服务繁忙，请稍后重试。")).With("Retry-After", "2"));
}
} // namespace

void AddSessionRoutes(Router& router, Services& services)
{
    router.Add({"POST", "/api/v1/sessions", Access::Public, 4096, Bind(services, OpenSession)});

    router.Add(
        {"GET", "/api/v1/sessions/current", Access::SignedIn, 0,
         [&services](const Request& request, const Reply& reply) {
             const auto session = services.sessions.Find(request.token);
             reply(Response::Json(200, SessionText(session.value_or(SignedIn{*request.account, 0}), {})));
         }});

    router.Add({"DELETE", "/api/v1/sessions/current", Access::SignedIn, 0,
                [&services](const Request& request, const Reply& reply) {
                    services.sessions.Close(request.token);
                    reply(Response::Empty());
                }});
}
} // namespace server
