// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FaultServer.h"

#include <WbHttpModule/WbHttpClient.h>

Q_DECLARE_METATYPE(WbHttpError)

// One request, as most tests send it, and its answer.
namespace HttpClientFixture
{
using Fault = FaultServer::Fault;

WbHttpRequest Get(const FaultServer& server, const QString& path = QStringLiteral("/x"));

// Sends one request and waits for its answer.
WbHttpAnswer Ask(WbHttpClient* client, const WbHttpRequest& request);
} // namespace HttpClientFixture
