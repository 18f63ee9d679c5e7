// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <algorithm>
#include <limits>

namespace
{
std::optional<QString> TextMember(const QJsonObject& json, const char* name)
{
    const QJsonValue value = json.value(QLatin1String(name));
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

bool IsSha256Hex(const QString& text)
{
    constexpr int hexDigits = 64;
    return text.size() == hexDigits && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
               return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                      (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
           });
}
} // namespace

std::optional<VersionServiceVersion> VersionServiceVersion::Read(const QJsonObject& json)
{
    const auto id = TextMember(json, "id");
    const auto appId = TextMember(json, "appId");
    const auto name = TextMember(json, "name");
    const auto description = TextMember(json, "description");
    const auto apiVersion = TextMember(json, "apiVersion");
    const auto pin = TextMember(json, "pin");
    const auto sha256 = TextMember(json, "sha256");
    const auto state = ServiceAnswers::IntMember(json, "state", AppSnapshotDevelop, AppSnapshotOnline);
    const auto revision = ServiceAnswers::IntMember(json, "revision", 1, std::numeric_limits<int>::max());
    if (!id || !appId || !name || !description || !apiVersion || !pin || !sha256 || !state || !revision ||
        !ServiceRoute::IsValidId(*id) || !IsSha256Hex(*sha256))
        return std::nullopt;
    return VersionServiceVersion{*id,  *name,        *state,      *revision, sha256->toLatin1(),
                                 *pin, *description, *apiVersion, *appId};
}

std::optional<VersionServiceVersion> VersionServiceVersion::ReadSaved(const WbHttpAnswer& answer)
{
    auto version = ServiceAnswers::ReadAs<VersionServiceVersion>(answer);
    if (!version || version->sha256 != answer.sentDigest.toHex() ||
        version->revision != ServiceAnswers::RevisionOf(answer))
        return std::nullopt;
    return version;
}
