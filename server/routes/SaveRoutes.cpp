// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/NoteRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

namespace server
{
namespace
{
constexpr int longestNote = 200;

struct NoteOrder
{
    qint64 revision = 0;
    QString note;
};

void ListSaves(Services& services, const Request& request, const Reply& reply)
{
    const auto app = services.store.FindApp(request.PathValue());
    if (!app || !MayEdit(*request.account, *app))
        return reply(wire::Refused(refusals::NotFound()));
    JsonText text;
    text.BeginObject().Key("saves").BeginArray();
    for (const SavedRevision& save : services.store.SavesOf(app->id))
        wire::Append(text, save);
    reply(Response::Json(200, text.EndArray().EndObject().Take()));
}

Outcome<NoteOrder> ReadNote(const Request& request)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return *refusal;
    const auto& object = std::get<QJsonObject>(parsed);
    const QJsonValue note = object.value(QLatin1String("note"));
    const NoteOrder order{object.value(QLatin1String("revision")).toInt(), note.toString().trimmed()};
    if (order.revision < 1)
        return Refusal{400, "bad-revision", QStringLiteral("版本修订号不正确。")};
    if (!note.isString() || (!order.note.isEmpty() && !wire::IsName(order.note, longestNote)))
        return Refusal{400, "bad-note", QStringLiteral("保存说明不超过 200 个字符，且不能包含控制字符。")};
    return order;
}

void NoteSave(Services& services, const Request& request, const Reply& reply)
{
    const auto order = ReadNote(request);
    if (const auto* refusal = std::get_if<Refusal>(&order))
        return reply(wire::Refused(*refusal));
    const auto act = [account = *request.account, id = request.PathValue(),
                      order = std::get<NoteOrder>(order)](Transaction& store) {
        const auto outcome = rules::NoteSave(store, account, id, order.revision, order.note, NowMs());
        const auto* refusal = std::get_if<Refusal>(&outcome);
        return refusal ? wire::Refused(*refusal) : Response::Empty();
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddSaveRoutes(Router& router, Services& services)
{
    router.Add(
        {"GET", "/api/v1/apps/{appId}/saves", Access::SignedIn, 0,
         [&services](const Request& request, const Reply& reply) { ListSaves(services, request, reply); }});
    router.Add(
        {"PUT", "/api/v1/versions/{versionId}/note", Access::SignedIn, wire::smallBody,
         [&services](const Request& request, const Reply& reply) { NoteSave(services, request, reply); }});
}
} // namespace server
