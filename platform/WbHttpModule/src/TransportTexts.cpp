// SPDX-License-Identifier: Apache-2.0

#include "TransportTexts_p.h"

QString TransportText(WbHttpError error)
{
    switch (error) {
    case WbHttpError::None:
        return {};
    case WbHttpError::BadRequest:
        return QStringLiteral("请求无法发送，请检查服务器地址设置");
    case WbHttpError::Cancelled:
        return QStringLiteral("请求已取消");
    case WbHttpError::CannotConnect:
        return QStringLiteral("无法连接服务器，请检查网络后重试");
    case WbHttpError::TlsFailed:
        return QStringLiteral("无法确认服务器身份，已停止连接");
    case WbHttpError::TimedOut:
        return QStringLiteral("服务器响应超时，请稍后重试");
    case WbHttpError::ConnectionLost:
        return QStringLiteral("与服务器的连接中断，请重试");
    case WbHttpError::TooLarge:
        return QStringLiteral("数据大小超出上限");
    case WbHttpError::BadAnswer:
        return QStringLiteral("服务器返回的数据格式不正确");
    case WbHttpError::Redirected:
        return QStringLiteral("服务器要求跳转到其他地址，已拒绝");
    case WbHttpError::DigestMismatch:
        return QStringLiteral("数据校验失败，内容可能在传输中损坏，请重试");
    case WbHttpError::BadJson:
        return QStringLiteral("服务器返回的内容未通过安全检查");
    }
    return {};
}

WbHttpAnswer FailedAnswer(WbHttpError error)
{
    WbHttpAnswer answer;
    answer.error = error;
    answer.errorText = TransportText(error);
    return answer;
}
