// SPDX-License-Identifier: Apache-2.0

#include "ResponseHead.h"

#include "../transport/BeastTypes.h"

namespace server
{
namespace
{
void AppendField(std::string& text, const char* name, const QByteArray& value)
{
    text.append(name).append(": ").append(value.constData(), static_cast<std::size_t>(value.size()));
    text.append("\r\n");
}
} // namespace

std::string ResponseHead(const Response& response, bool keepAlive)
{
    constexpr std::size_t usualLength = 400;
    std::string text;
    text.reserve(usualLength);
    const auto reason = http::obsolete_reason(static_cast<http::status>(response.status));
    text.append("HTTP/1.1 ").append(std::to_string(response.status)).append(1, ' ');
    text.append(reason.data(), reason.size()).append("\r\n");
    if (!response.contentType.isEmpty())
        AppendField(text, "Content-Type", response.contentType);
    text.append("Cache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n");
    for (const auto& [name, value] : response.headers)
        AppendField(text, name.constData(), value);
    if (!keepAlive)
        text.append("Connection: close\r\n");
    if (response.status != 204)
        AppendField(text, "Content-Length", QByteArray::number(response.body.size()));
    return text.append("\r\n");
}

Response RefusalFor(int status)
{
    switch (status) {
    case 413:
        return Response::Refuse(413, "body-too-large", QStringLiteral("内容超过大小上限，无法提交。"));
    case 414:
        return Response::Refuse(414, "url-too-long", QStringLiteral("请求地址过长。"));
    case 421:
        return Response::Refuse(421, "wrong-host", QStringLiteral("请求的主机名不属于本服务。"));
    case 431:
        return Response::Refuse(431, "header-too-large", QStringLiteral("请求头过大。"));
    case 503:
        return Response::Refuse(503, "busy", QStringLiteral("服务繁忙，请稍后重试。"))
            .With("Retry-After", "2");
    default:
        return Response::Refuse(400, "bad-request", QStringLiteral("请求格式不正确。"));
    }
}
} // namespace server
