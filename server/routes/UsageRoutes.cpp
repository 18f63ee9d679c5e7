// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/UsageRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonValue>

#include <algorithm>

namespace server
{
namespace
{
constexpr int mostEvents = 100; // of a request
constexpr int longestWord = 64;
constexpr int usualDays = 30;
constexpr int mostCounts = 2000;

bool IsWord(const QString& text)
{
    const auto isFit = [](QChar c) {
        const ushort code = c.unicode();
        return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
               code == '_' || code == '-' || code == '.';
    };
    return !text.isEmpty() && text.size() <= longestWord && std::all_of(text.begin(), text.end(), isFit);
}

// The clock of a client may be wrong: what it did later than now it did today.
std::optional<UsageEvent> ReadEvent(const QJsonObject& object, qint64 now)
{
    const double time = object.value(QLatin1String("time")).toDouble();
    const UsageEvent event{object.value(QLatin1String("id")).toString(),
                           object.value(QLatin1String("event")).toString(),
                           static_cast<qint64>(std::clamp(time, 0.0, double(now))) / dayMs};
    const bool isFit = IsWord(event.id) && IsWord(event.event) && event.day >= now / dayMs - usageKeptDays;
    return isFit ? std::optional(event) : std::nullopt;
}

// Events that are none are left out: whoever sends them would send them again for ever.
std::vector<UsageEvent> ReadEvents(const Request& request, qint64 now)
{
    const QJsonValue given = wire::SmallObject(request).value(QLatin1String("events"));
    const QJsonArray list = given.toArray();
    if (!given.isArray() || list.size() > mostEvents)
        throw Refusal{400, "bad-events", QStringLiteral("使用情况应为列表，每次不超过 100 条。")};
    std::vector<UsageEvent> events;
    for (const QJsonValue& value : list)
        if (const auto event = ReadEvent(value.toObject(), now))
            events.push_back(*event);
    return events;
}

// The ids of the events make a repetition harmless, so this write needs no idempotency key.
void KeepEvents(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, events = ReadEvents(request, NowMs())](Transaction& store) {
        rules::KeepUsage(store, account, events);
        return Response::Empty();
    };
    WriteAgain(services.store, act, reply, {QStringLiteral("usage ") + request.account->pin});
}

void ShowCounts(Services& services, const Request& request, const Reply& reply)
{
    const QString asked = request.QueryValue("days");
    bool isNumber = true;
    const int days = asked.isNull() ? usualDays : asked.toInt(&isNumber);
    if (!isNumber || days < 1 || days > usageKeptDays)
        throw Refusal{400, "bad-days", QStringLiteral("天数应为 1 到 90。")};
    const auto write = [](JsonText& text, const UsageCount& count) {
        text.BeginObject()
            .Member("day", QDate(1970, 1, 1).addDays(count.day).toString(Qt::ISODate))
            .Member("event", count.event)
            .Member("count", count.count)
            .EndObject();
    };
    const qint64 fromDay = NowMs() / dayMs - days + 1;
    reply(wire::ListAnswer("counts", services.store.UsageOf(request.account->venderId, fromDay, mostCounts),
                           write));
}
} // namespace

void AddUsageRoutes(Router& router, Services& services)
{
    router.Add(
        {"POST", "/api/v1/usage-events", Access::SignedIn, wire::smallBody, Bind(services, KeepEvents)});
    router.Add({"GET", "/api/v1/usage", Access::Administrator, 0, Bind(services, ShowCounts)});
}
} // namespace server
