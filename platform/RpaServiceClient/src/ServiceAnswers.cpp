// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceAnswers.h>

#include <QJsonDocument>

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
} // namespace

QJsonObject ServiceAnswers::ObjectOf(const WbHttpAnswer& answer)
{
    return QJsonDocument::fromJson(answer.body).object();
}

QString ServiceAnswers::Text(const QJsonObject& json, const char* name)
{
    return json.value(QLatin1String(name)).toString();
}

QDateTime ServiceAnswers::Time(const QJsonObject& json, const char* name)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(json.value(QLatin1String(name)).toDouble()), Qt::UTC);
}

std::optional<int> ServiceAnswers::IntMember(const QJsonObject& json, const char* name, int least, int most)
{
    const QJsonValue value = json.value(QLatin1String(name));
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < least || number > most || std::floor(number) != number)
        return std::nullopt;
    return int(number);
}

QString ServiceAnswers::Presentable(const QString& message)
{
    constexpr int longest = 200;
    QString text = message.simplified().left(longest);
    text.remove(QChar::Null);
    return text;
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
    return Text(ObjectOf(answer), "code");
}

QString ServiceAnswers::FailureText(const WbHttpAnswer& answer)
{
    if (answer.error != WbHttpError::None)
        return answer.errorText;
    // Always these words: they say that nothing is lost and what to do, which a server cannot know.
    if (answer.status == 412)
        return QStringLiteral(
            "该版本已被他人修改，您的内容仍在编辑器中，请另存为新版本，或重新打开该版本后再保存");
    QString message = Presentable(Text(ObjectOf(answer), "message"));
    if (!message.isEmpty())
        return message;
    for (const auto& entry : statusTexts)
        if (entry.status == answer.status)
            return QString::fromUtf8(entry.text);
    return QStringLiteral("服务器拒绝了请求（%1）").arg(answer.status);
}

QString ServiceAnswers::UnusableText()
{
    return QStringLiteral("服务器返回的数据不完整，请稍后重试");
}
