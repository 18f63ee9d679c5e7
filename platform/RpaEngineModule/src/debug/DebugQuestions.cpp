// SPDX-License-Identifier: Apache-2.0

#include "RpaDebugSession_p.h"

int RpaDebugSession::Ask(QVariantMap request)
{
    if (d->state != State::Paused)
        return 0;
    const int number = ++d->lastRequest;
    d->open.insert(number);
    request.insert(QStringLiteral("stop"), d->pause.number);
    request.insert(QStringLiteral("id"), number);
    d->Send(request);
    return number;
}

int RpaDebugSession::AskScopes(int frame)
{
    return Ask(DebugFrames::Request(QStringLiteral("scopes"), {{QStringLiteral("frame"), frame}}));
}

int RpaDebugSession::AskChildren(int handle, int first, int count)
{
    return Ask(DebugFrames::Request(QStringLiteral("children"),
                                    {{QStringLiteral("handle"), handle},
                                     {QStringLiteral("first"), qMax(0, first)},
                                     {QStringLiteral("count"), qBound(0, count, entriesPerPage)}}));
}

int RpaDebugSession::Evaluate(int frame, const QString& expression)
{
    return Ask(
        DebugFrames::Request(QStringLiteral("evaluate"),
                             {{QStringLiteral("frame"), frame}, {QStringLiteral("expression"), expression}}));
}

int RpaDebugSession::SetValue(int frame, int handle, const RpaDebugValue& value, const QString& expression)
{
    return Ask(DebugFrames::Request(QStringLiteral("set"), {{QStringLiteral("frame"), frame},
                                                            {QStringLiteral("handle"), handle},
                                                            {QStringLiteral("name"), value.name},
                                                            {QStringLiteral("index"), value.index},
                                                            {QStringLiteral("expression"), expression}}));
}
