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
    const App app = EditableApp(services.store, *request.account, request.PathValue());
    reply(wire::ListAnswer("saves", services.store.SavesOf(app.id)));
}

NoteOrder ReadNote(const Request& request)
{
    const QJsonObject object = wire::SmallObject(request);
    const QJsonValue note = object.value(QLatin1String("note"));
    NoteOrder order{object.value(QLatin1String("revision")).toInt(), note.toString().trimmed()};
    if (order.revision < 1)
        throw Refusal{400, "bad-revision", QStringLiteral("版本修订号不正确。")};
    if (!note.isString() || (!order.note.isEmpty() && !wire::IsName(order.note, longestNote)))
        throw Refusal{400, "bad-note", QStringLiteral("保存说明不超过 200 个字符，且不能包含控制字符。")};
    return order;
}

void NoteSave(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue(),
                      order = ReadNote(request)](Transaction& store) {
        rules::NoteSave(store, account, id, order.revision, order.note, NowMs());
        return Response::Empty();
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddSaveRoutes(Router& router, Services& services)
{
    router.Add({"GET", "/api/v1/apps/{appId}/saves", Access::SignedIn, 0, Bind(services, ListSaves)});
    router.Add({"PUT", "/api/v1/versions/{versionId}/note", Access::SignedIn, wire::smallBody,
                Bind(services, NoteSave)});
}
} // namespace server
