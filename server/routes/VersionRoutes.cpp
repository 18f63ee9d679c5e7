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

Response AnswerOf(int status, const Outcome<Version>& outcome)
{
    if (const auto* refusal = std::get_if<Refusal>(&outcome))
        return wire::Refused(*refusal);
    return wire::VersionAnswer(status, std::get<Version>(outcome));
}

Outcome<VersionDraft> ReadTexts(const Request& request, bool nameRequired)
{
    VersionDraft draft;
    for (const auto& [header, text] :
         {std::pair("version-name", &draft.name), std::pair("version-description", &draft.description),
          std::pair("version-api", &draft.apiVersion)}) {
        const auto read = wire::HeaderText(request, header);
        if (const auto* refusal = std::get_if<Refusal>(&read))
            return *refusal;
        *text = std::get<QString>(read);
    }
    const bool nameGiven = !request.Header("version-name").isNull();
    if ((nameRequired || nameGiven) && !wire::IsName(draft.name, longestName))
        return Refusal{400, "bad-name", QStringLiteral("版本名称应为 1 到 20 个字符，且不能包含控制字符。")};
    if (draft.description.size() > longestDescription)
        return Refusal{400, "bad-description", QStringLiteral("版本描述不能超过 500 个字符。")};
    if (draft.apiVersion.size() > longestApiVersion)
        return Refusal{400, "bad-api-version", QStringLiteral("接口版本号不正确。")};
    return draft;
}

// An editor would open what is no app as an empty one, and its next save would make that final.
std::optional<Refusal> RefusalOfContent(const QByteArray& body)
{
    const AppOutline outline = AppOutline::Read(body);
    if (outline.IsApp())
        return std::nullopt;
    const QString text = outline.kind == AppOutline::Kind::NotJson
                             ? QStringLiteral("应用数据不是有效的 JSON，没有保存。%1")
                             : QStringLiteral("提交的内容不是完整的应用，没有保存。%1");
    return Refusal{400, "bad-app-data", text.arg(outline.problem)};
}

// The draft that a save carries: texts in headers, app data as the body.
Outcome<VersionDraft> ReadDraft(const Request& request, bool nameRequired)
{
    auto read = ReadTexts(request, nameRequired);
    if (std::holds_alternative<Refusal>(read))
        return read;
    auto& draft = std::get<VersionDraft>(read);
    const QByteArray expected = ParseContentDigest(request.Header("content-digest"));
    if (expected.isEmpty())
        return Refusal{400, "digest-required", QStringLiteral("请求缺少内容校验值（Content-Digest）。")};
    draft.body = request.body;
    draft.sha256 = Sha256(draft.body);
    if (draft.sha256 != expected)
        return Refusal{400, "digest-mismatch", QStringLiteral("内容在传输中损坏，没有保存，请重试。")};
    if (auto refusal = RefusalOfContent(draft.body))
        return *refusal;
    return read;
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
            text = Write(*list);
        }
        return text;
    }

private:
    static QByteArray Write(const std::vector<Version>& versions)
    {
        JsonText text;
        text.BeginObject().Key("versions").BeginArray();
        for (const Version& version : versions)
            wire::Append(text, version);
        return text.EndArray().EndObject().Take();
    }

    std::mutex mutex;
    QHash<QString, std::pair<VersionList, QByteArray>> texts;
};

void ListVersions(ListTexts& texts, Services& services, const Request& request, const Reply& reply)
{
    const auto app = services.store.FindApp(request.PathValue());
    if (!app || !MayEdit(*request.account, *app))
        return reply(wire::Refused(refusals::NotFound()));
    reply(Response::Json(200, texts.TextOf(app->id, services.store.VersionsOf(app->id))));
}

void CreateVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto draft = ReadDraft(request, true);
    if (const auto* refusal = std::get_if<Refusal>(&draft))
        return reply(wire::Refused(*refusal));
    const auto act = [account = *request.account, appId = request.PathValue(),
                      draft = std::get<VersionDraft>(draft)](Transaction& store) {
        return AnswerOf(201, rules::CreateVersion(store, account, appId, draft, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void OverwriteVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto revision = wire::BasedOnRevision(request);
    if (const auto* refusal = std::get_if<Refusal>(&revision))
        return reply(wire::Refused(*refusal));
    const auto draft = ReadDraft(request, false);
    if (const auto* refusal = std::get_if<Refusal>(&draft))
        return reply(wire::Refused(*refusal));
    const auto act = [account = *request.account, id = request.PathValue(),
                      revision = std::get<qint64>(revision),
                      draft = std::get<VersionDraft>(draft)](Transaction& store) {
        return AnswerOf(200, rules::OverwriteVersion(store, account, id, revision, draft, NowMs()));
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
        return reply(wire::Refused(refusals::NotFound()));
    const QByteArray body = services.store.ReadBody(version->id, version->revision);
    reply(Response::Json(200, body)
              .With("ETag", wire::ETag(version->revision))
              .With("Content-Digest", ContentDigest(version->sha256)));
}

void DeleteVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto revision = wire::BasedOnRevision(request);
    if (const auto* refusal = std::get_if<Refusal>(&revision))
        return reply(wire::Refused(*refusal));
    const auto act = [account = *request.account, id = request.PathValue(),
                      revision = std::get<qint64>(revision)](Transaction& store) {
        const auto outcome = rules::DeleteVersion(store, account, id, revision, NowMs());
        const auto* refusal = std::get_if<Refusal>(&outcome);
        return refusal ? wire::Refused(*refusal) : Response::Empty();
    };
    WriteOnce(services.store, request, act, reply);
}

void RestoreVersion(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue()](Transaction& store) {
        return AnswerOf(200, rules::RestoreVersion(store, account, id, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddVersionRoutes(Router& router, Services& services)
{
    const auto add = [&](const char* method, const char* pattern, Access access, qint64 bodyLimit,
                         auto function) {
        router.Add({method, pattern, access, bodyLimit,
                    [&services, function](const Request& request, const Reply& reply) {
                        function(services, request, reply);
                    }});
    };
    const auto list = [texts = std::make_shared<ListTexts>()](Services& all, const Request& request,
                                                              const Reply& reply) {
        ListVersions(*texts, all, request, reply);
    };
    add("GET", "/api/v1/apps/{appId}/versions", Access::SignedIn, 0, list);
    add("POST", "/api/v1/apps/{appId}/versions", Access::SignedIn, ContentLimits::totalBytes, CreateVersion);
    add("PUT", "/api/v1/versions/{versionId}", Access::SignedIn, ContentLimits::totalBytes, OverwriteVersion);
    add("GET", "/api/v1/versions/{versionId}/data", Access::SignedIn, 0, SendData);
    add("DELETE", "/api/v1/versions/{versionId}", Access::SignedIn, 0, DeleteVersion);
    add("POST", "/api/v1/versions/{versionId}/restore", Access::Administrator, wire::smallBody,
        RestoreVersion);
}
} // namespace server
