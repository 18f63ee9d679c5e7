// SPDX-License-Identifier: Apache-2.0

#include "TransferWorker_p.h"
#include "TransportTexts_p.h"

#include <WbHttpModule/WbHttpClient.h>

#include <QObject>

#include <curl/curl.h>
#include <map>

class WbHttpClient::Private
{
public:
    Private()
        : worker(std::make_unique<TransferWorker>(
              [this](quint64 id, const WbHttpAnswer& answer) { PostAnswer(id, answer); }))
    {
    }

    // Any thread; the answer is delivered by the event loop of the receiver's thread.
    void PostAnswer(Id id, const WbHttpAnswer& answer)
    {
        QMetaObject::invokeMethod(
            &receiver, [this, id, answer] { Deliver(id, answer); }, Qt::QueuedConnection);
    }

    // The one place where a request is answered: whoever takes its callback out of the table calls it.
    void Deliver(Id id, const WbHttpAnswer& answer)
    {
        const auto position = pending.find(id);
        if (position == pending.end())
            return;
        const Callback callback = std::move(position->second);
        pending.erase(position);
        if (callback)
            callback(answer);
    }

    std::map<Id, Callback> pending; // in the order of sending
    Id lastId = 0;
    QObject receiver;
    std::unique_ptr<TransferWorker> worker; // after receiver: it posts to it
};

WbHttpClient::WbHttpClient() : d(std::make_unique<Private>()) {}

WbHttpClient::~WbHttpClient()
{
    d->worker.reset();
    while (!d->pending.empty())
        d->Deliver(d->pending.begin()->first, FailedAnswer(WbHttpError::Cancelled));
}

QString WbHttpClient::GetLibraryName()
{
    return QStringLiteral("libcurl ") + QString::fromLatin1(curl_version_info(CURLVERSION_NOW)->version);
}

QString WbHttpClient::GetTlsName()
{
    // Null without TLS, though no such library is ever linked.
    return QString::fromLatin1(curl_version_info(CURLVERSION_NOW)->ssl_version)
        .replace(QLatin1Char('/'), QLatin1Char(' '));
}

WbHttpClient::Id WbHttpClient::Send(const WbHttpRequest& request, Callback callback)
{
    const Id id = ++d->lastId;
    d->pending.emplace(id, std::move(callback));
    if (d->worker)
        d->worker->Add(id, request);
    return id;
}

void WbHttpClient::Cancel(Id id)
{
    if (d->pending.find(id) == d->pending.end() || !d->worker)
        return;
    d->worker->Drop(id);
    d->PostAnswer(id, FailedAnswer(WbHttpError::Cancelled));
}

int WbHttpClient::GetOutstandingCount() const
{
    return int(d->pending.size());
}
