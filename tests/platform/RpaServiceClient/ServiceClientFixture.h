// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FaultServer.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QtTest>

#include <memory>
#include <optional>

// What the service tells of one app, and where a test sees the answer of a call.
namespace ServiceExamples
{
template <typename Value>
using Result = std::optional<VersionServiceResult<Value>>;

// Keeps the answer where the test can see it.
template <typename Value>
VersionServiceClient::Callback<Value> Into(Result<Value>* result)
{
    return [result](const VersionServiceResult<Value>& answer) { *result = answer; };
}

inline const QByteArray app =
    R"({"id":"a1","name":"应用","kind":1,"creator":"me","creatorName":"我","oxsAppKey":"k",)"
    R"("createdAt":1000,"changedAt":2000})";
inline const QByteArray account = R"({"pin":"me","name":"我","venderId":"vender","roles":["author","user"]})";

inline QByteArray Released(int state)
{
    return R"({"app":)" + app + R"(,"version":{"id":"v1","name":"版本1","description":"描述","state":)" +
           QByteArray::number(state) + R"(},"releasedAt":3000})";
}

inline const QByteArray invitation =
    R"({"id":"i1","code":"ABCDE-FGHJK","appId":"a1","versionId":"v1","createdAt":1000,"expiresAt":9000,)"
    R"("mostUses":5,"uses":2,"revokedAt":0})";
} // namespace ServiceExamples

// Each test has a server of its own that answers as it is told.
class ServiceClientFixture : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<FaultServer> server;

private slots:
    void init()
    {
        server = std::make_unique<FaultServer>();
        auto* settings = VersionServiceSettings::Instance();
        settings->SetBaseUrl(server->GetUrl());
        settings->SetToken("token");
        WbHttpLimits limits;
        limits.inactivity = std::chrono::milliseconds(1000);
        limits.total = std::chrono::milliseconds(2000);
        settings->SetLimits(limits);
    }
};
