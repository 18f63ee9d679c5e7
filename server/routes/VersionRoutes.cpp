// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../base/Digest.h"
#include "../rules/VersionRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <WbFoundation/AppOutline.h>
#include <WbFoundation/ContentLimits.h>

#include <algorithm>

namespace server
{
namespace
{
constexpr int longestName = 20;
constexpr int longestDescription = 500;
constexpr int longestApiVersion = 32;

VersionDraft ReadTexts(const Request& request, bool nameRequired)
{
    VersionDraft draft;
    for (const auto& [header, text] :
         {std::pair("version-name", &draft.name), std::pair("version-description", &draft.description),
          std::pair("version-api", &draft.apiVersion)})
        *text = wire::HeaderText(request, header);
    const bool nameGiven = !request.Header("version-name").isNull();
    if ((nameRequired || nameGiven) && !wire::IsName(draft.name, longestName))
        throw Refusal{400, "bad-name", QStringLiteral("版本名称应为 1 到 20 个字符，且不能包含控制字符。")};
    if (draft.description.size() > longestDescription)
        throw Refusal{400, "bad-description", QStringLiteral("版本描述不能超过 500 个字符。")};
    if (draft.apiVersion.size() > longestApiVersion)
        throw Refusal{400, "bad-api-version", QStringLiteral("接口版本号不正确。")};
    return draft;
}

// An editor would open what is no app as an empty one, and its next save would make that final.
void RequireApp(const QByteArray& body)
{
    const AppOutline outline = AppOutline::Read(body);
    if (outline.IsApp())
        return;
    const QString text = outline.kind == AppOutline::Kind::NotJson
                             ? QStringLiteral("应用数据不是有效的 JSON，没有保存。%1")
                             : QStringLiteral("提交的内容不是完整的应用，没有保存。%1");
    throw Refusal{400, "bad-app-data", text.arg(outline.problem)};
}

// The draft that a save carries: texts in headers, app data as the body.
VersionDraft ReadDraft(const Request& request, bool nameRequired)
{
    VersionDraft draft = ReadTexts(request, nameRequired);
    const QByteArray expected = ParseContentDigest(request.Header("content-digest"));
    if (expected.isEmpty())
        throw Refusal{400, "digest-required", QStringLiteral("请求缺少内容校验值（Content-Digest）。")};
    draft.body = request.body;
    draft.sha256 = Sha256(draft.body);
    if (draft.sha256 != expected)
        throw Refusal{400, "digest-mismatch", QStringLiteral("内容在传输中损坏，没有保存，请重试。")};
    RequireApp(draft.body);
    return draft;
}

// The text of a list is kept as long as the store hands out the same list.
class ListTexts
{
public:
    QByteArray TextOf(const QString& appId, const VersionList& list)
    {
        constexpr int manyTexts = 1000;
        const std::lock_guard lock(mutex);
        if (texts.size() > manyTexts)
            texts.clear();
        auto& [known, text] = texts[appId];
        if (known != list) {
            known = list;
            text = wire::ListAnswer("versions", *list).body;
        }
        return text;
    }

private:
    std::mutex mutex;
    QHash<QString, std::pair<VersionList, QByteArray>> texts;
};

void ListVersions(ListTexts& texts, Services& services, const Request& request, const Reply& reply)
{
    const App app = EditableApp(services.store, *request.account, request.PathValue());
    reply(Response::Json(200, texts.TextOf(app.id, services.store.VersionsOf(app.id))));
}

void CreateVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, appId = request.PathValue(),
                      draft = ReadDraft(request, true)](Transaction& store) {
        return wire::VersionAnswer(201, rules::CreateVersion(store, account, appId, draft, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void OverwriteVersion(Services& services, const Request& request, const Reply& reply)
{
    const qint64 revision = wire::BasedOnRevision(request);
    const auto act = [account = *request.account, id = request.PathValue(), revision,
                      draft = ReadDraft(request, false)](Transaction& store) {
        return wire::VersionAnswer(200,
                                   rules::OverwriteVersion(store, account, id, revision, draft, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

// Besides the editors: whom an online version was published to and whom a gray one was opened to, until it is
// taken back.
bool MayRun(Store& store, const Account& account, const App& app, const Version& version)
{
    if (MayEdit(account, app))
        return true;
    if (version.withdrawnAt != 0)
        return false;
    if (version.state == VersionState::Online)
        return account.venderId == app.venderId;
    return version.state == VersionState::Gray && store.HasGrayAccess(app.id, account.pin);
}

void SendData(Services& services, const Request& request, const Reply& reply)
{
    const auto version = services.store.FindVersion(request.PathValue());
    const auto app = version ? services.store.FindApp(version->appId) : std::nullopt;
    if (!app || !MayRun(services.store, *request.account, *app, *version))
        throw refusals::NotFound();
    const QByteArray body = services.store.ReadBody(version->id, version->revision);
    reply(Response::Json(200, body)
              .With("ETag", wire::ETag(version->revision))
              .With("Content-Digest", ContentDigest(version->sha256)));
}

void DeleteVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue(),
                      revision = wire::BasedOnRevision(request)](Transaction& store) {
        rules::DeleteVersion(store, account, id, revision, NowMs());
        return Response::Empty();
    };
    WriteOnce(services.store, request, act, reply);
}

void RestoreVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue()](Transaction& store) {
        return wire::VersionAnswer(200, rules::RestoreVersion(store, account, id, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddVersionRoutes(Router& router, Services& services)
{
    const auto list = [texts = std::make_shared<ListTexts>()](Services& all, const Request& request,
                                                              const Reply& reply) {
        ListVersions(*texts, all, request, reply);
    };
    router.Add({"GET", "/api/v1/apps/{appId}/versions", Access::SignedIn, 0, Bind(services, list)});
    router.Add({"POST", "/api/v1/apps/{appId}/versions", Access::SignedIn, ContentLimits::totalBytes,
                Bind(services, CreateVersion)});
    router.Add({"PUT", "/api/v1/versions/{versionId}", Access::SignedIn, ContentLimits::totalBytes,
                Bind(services, OverwriteVersion)});
    router.Add({"GET", "/api/v1/versions/{versionId}/data", Access::SignedIn, 0, Bind(services, SendData)});
    router.Add(
        {"DELETE", "/api/v1/versions/{versionId}", Access::SignedIn, 0, Bind(services, DeleteVersion)});
    router.Add({"POST", "/api/v1/versions/{versionId}/restore", Access::Administrator, wire::smallBody,
                Bind(services, RestoreVersion)});
}
} // namespace server
