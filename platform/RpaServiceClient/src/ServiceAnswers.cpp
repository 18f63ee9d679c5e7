// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoutes.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace
{
struct StatusText
{
    int status;
    const char* text;
};

constexpr StatusText statusTexts[] = {
    {400, "请求内容不正确"},
    {401, "登录已失效，请重新登录"},
    {403, "没有权限执行此操作"},
    {404, "版本或应用不存在，可能已被删除"},
    {409, "操作与服务器上的现有内容冲突"},
    {413, "应用数据超过64MB，无法保存"},
    {428, "缺少版本信息，请重新打开该版本后再试"},
    {429, "操作过于频繁，请稍后再试"},
    {500, "服务器内部错误，请稍后重试"},
    {503, "服务器繁忙，请稍后重试"},
};

std::optional<QString> TextMember(const QJsonObject& json, const char* name)
{
    const QJsonValue value = json.value(QLatin1String(name));
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<int> IntMember(const QJsonObject& json, const char* name, int least, int most)
{
    const QJsonValue value = json.value(QLatin1String(name));
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < least || number > most || std::floor(number) != number)
        return std::nullopt;
    return int(number);
}

bool IsSha256Hex(const QString& text)
{
    constexpr int hexDigits = 64;
    return text.size() == hexDigits && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
               return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                      (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
           });
}

// The server's words are shown in a notice: one line of plain text, cut to what a notice can hold.
QString Presentable(const QString& message)
{
    constexpr int longest = 200;
    QString text = message.simplified().left(longest);
    text.remove(QChar::Null);
    return text;
}
} // namespace

QJsonObject ServiceAnswers::ObjectOf(const QByteArray& body)
{
    return QJsonDocument::fromJson(body).object();
}

std::optional<ServiceAnswers::VersionRecord> ServiceAnswers::ReadVersion(const QJsonObject& json)
{
    const auto id = TextMember(json, "id");
    const auto appId = TextMember(json, "appId");
    const auto name = TextMember(json, "name");
    const auto description = TextMember(json, "description");
    const auto apiVersion = TextMember(json, "apiVersion");
    const auto pin = TextMember(json, "pin");
    const auto sha256 = TextMember(json, "sha256");
    const auto state = IntMember(json, "state", AppSnapshotDevelop, AppSnapshotOnline);
    const auto revision = IntMember(json, "revision", 1, std::numeric_limits<int>::max());
    if (!id || !appId || !name || !description || !apiVersion || !pin || !sha256 || !state || !revision ||
        !ServiceRoutes::IsValidId(*id) || !IsSha256Hex(*sha256))
        return std::nullopt;

    VersionRecord record;
    record.snapshot = RpaAppSnapshotPtr::create();
    record.snapshot->SetId(*id);
    record.snapshot->SetAppId(*appId);
    record.snapshot->SetName(*name);
    record.snapshot->SetDesc(*description);
    record.snapshot->SetApiVersion(*apiVersion);
    record.snapshot->SetPin(*pin);
    record.snapshot->SetState(static_cast<AppSnapshotState>(*state));
    record.revision = *revision;
    record.sha256 = sha256->toLatin1();
    return record;
}

std::optional<QVector<ServiceAnswers::VersionRecord>> ServiceAnswers::ReadVersions(const QByteArray& body)
{
    const QJsonValue list = ObjectOf(body).value(QLatin1String("versions"));
    if (!list.isArray())
        return std::nullopt;
    const QJsonArray array = list.toArray();
    QVector<VersionRecord> records;
    records.reserve(array.size());
    QSet<QString> ids;
    for (const QJsonValue& entry : array) {
        const auto record = ReadVersion(entry.toObject());
        if (!record || ids.contains(record->snapshot->GetId()))
            return std::nullopt;
        ids.insert(record->snapshot->GetId());
        records.append(*record);
    }
    return records;
}

std::optional<ServiceAnswers::ReleaseRecord> ServiceAnswers::ReadRelease(const QByteArray& body)
{
    const QJsonObject json = ObjectOf(body);
    const auto result = IntMember(json, "result", 0, 1);
    const QJsonValue needTip = json.value(QLatin1String("needTip"));
    const auto version = ReadVersion(json.value(QLatin1String("version")).toObject());
    if (!result || !needTip.isBool() || !version)
        return std::nullopt;
    return ReleaseRecord{*result, needTip.toBool(),
                         Presentable(json.value(QLatin1String("message")).toString()), *version};
}

std::optional<ServiceAnswers::VersionRecord> ServiceAnswers::ReadSaved(const WbHttpAnswer& answer)
{
    const auto record = ReadVersion(ObjectOf(answer.body));
    if (!record || record->sha256 != answer.sentDigest.toHex() || record->revision != RevisionOf(answer))
        return std::nullopt;
    return record;
}

int ServiceAnswers::RevisionOf(const WbHttpAnswer& answer)
{
    const QByteArray tag = answer.headers.value("etag");
    if (tag.size() < 3 || !tag.startsWith('"') || !tag.endsWith('"'))
        return 0;
    bool ok = false;
    const int revision = tag.mid(1, tag.size() - 2).toInt(&ok);
    return ok && revision > 0 ? revision : 0;
}

QString ServiceAnswers::RefusalCode(const WbHttpAnswer& answer)
{
    if (answer.error != WbHttpError::None || answer.status < 400)
        return {};
    return ObjectOf(answer.body).value(QLatin1String("code")).toString();
}

QString ServiceAnswers::FailureText(const WbHttpAnswer& answer)
{
    if (answer.error != WbHttpError::None)
        return answer.errorText;
    // Always these words: they say that nothing is lost and what to do, which a server cannot know.
    if (answer.status == 412)
        return QStringLiteral(
            "该版本已被他人修改，您的内容仍在编辑器中，请另存为新版本，或重新打开该版本后再保存");
    const QString message = Presentable(ObjectOf(answer.body).value(QLatin1String("message")).toString());
    if (!message.isEmpty())
        return message;
    for (const auto& entry : statusTexts)
        if (entry.status == answer.status)
            return QString::fromUtf8(entry.text);
    return QStringLiteral("服务器拒绝了请求（%1）").arg(answer.status);
}

QString ServiceAnswers::TooOldText()
{
    return QStringLiteral("当前版本过低，请更新为最新版本");
}

QString ServiceAnswers::UnusableText()
{
    return QStringLiteral("服务器返回的数据不完整，请稍后重试");
}
