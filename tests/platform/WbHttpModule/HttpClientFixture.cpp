// SPDX-License-Identifier: Apache-2.0

#include "HttpClientFixture.h"

#include <QtTest>

#include <optional>

using namespace std::chrono_literals;

WbHttpRequest HttpClientFixture::Get(const FaultServer& server, const QString& path)
{
    WbHttpRequest request;
    request.url = server.GetUrl();
    request.url.setPath(path);
    request.limits.connect = 2000ms;
    request.limits.inactivity = 1000ms;
    request.limits.total = 2000ms;
    return request;
}

WbHttpAnswer HttpClientFixture::Ask(WbHttpClient* client, const WbHttpRequest& request)
{
    std::optional<WbHttpAnswer> received;
    client->Send(request, [&received](const WbHttpAnswer& answer) { received = answer; });
    [&] { QTRY_VERIFY(received.has_value()); }();
    return received.value_or(WbHttpAnswer());
}
