// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceTransport.h>
#include <RpaServiceClient/VersionServiceClient.h>

#include <QPointer>

class VersionServiceClient::Private
{
public:
    ServiceTransport transport;
    QObject whole; // after the transport: gone when that answers for the last time
};

VersionServiceClient::VersionServiceClient() : d(std::make_unique<Private>()) {}

VersionServiceClient::~VersionServiceClient() = default;

void VersionServiceClient::SendHttp(const WbHttpRequest& request, QObject* context, const Done& done)
{
    const bool hasContext = context != nullptr;
    const QPointer<QObject> guard(context);
    const QPointer<QObject> client(&d->whole);
    d->transport.Send(request, [done, guard, client, hasContext](const WbHttpAnswer& answer) {
        if (!hasContext || (guard && client))
            done(answer);
    });
}
