// SPDX-License-Identifier: Apache-2.0

#include "UsageReports.h"

#include <RpaServiceClient/usage/SendUsageEventsRequest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QJsonDocument>

namespace
{
// Refused for what it is: it would be again.
bool IsUseless(const QString& refusal)
{
    return refusal == QLatin1String("bad-events") || refusal == QLatin1String("bad-json") ||
           refusal == QLatin1String("body-too-large");
}

// Whatever else a line of the queue may hold stays here.
QJsonObject WhatIsSent(const QJsonObject& event)
{
    QJsonObject sent;
    for (const char* name : {"id", "event", "time"})
        sent.insert(QLatin1String(name), event.value(QLatin1String(name)));
    return sent;
}
} // namespace

UsageReports::UsageReports(const QString& queueFolder, QObject* parent) : QObject(parent), root(queueFolder)
{
}

UsageReports::~UsageReports()
{
    End();
}

void UsageReports::Begin(const QString& server, const QString& pin)
{
    End();
    const QByteArray who = (server + QLatin1Char('\n') + pin).toUtf8();
    const QByteArray name = QCryptographicHash::hash(who, QCryptographicHash::Sha256).toHex().left(32);
    folder = root + QLatin1Char('/') + QString::fromLatin1(name);
    Start();
}

void UsageReports::End()
{
    Stop();
    folder.clear();
}

void UsageReports::Allow(bool allow)
{
    allowed = allow;
    UsageMonitor::Instance()->SetEnabled(allowed);
    Stop();
    if (!allowed)
        QDir(root).removeRecursively();
    Start();
}

void UsageReports::Start()
{
    if (!allowed || folder.isEmpty())
        return;
    {
        const std::lock_guard<std::mutex> locked(mutex);
        stopped = false;
    }
    UsageMonitor::Settings settings;
    settings.folder = folder;
    UsageMonitor::Instance()->Start(settings,
                                    [this](const UsageMonitor::Batch& batch) { return Deliver(batch); });
}

void UsageReports::Stop()
{
    {
        const std::lock_guard<std::mutex> locked(mutex);
        stopped = true;
        ++lastBatch;
    }
    changed.notify_all();
    UsageMonitor::Instance()->Stop();
}

bool UsageReports::Deliver(const UsageMonitor::Batch& batch)
{
    std::unique_lock<std::mutex> locked(mutex);
    if (stopped)
        return false;
    arrived.reset();
    const quint64 number = ++lastBatch;
    QMetaObject::invokeMethod(
        this, [this, batch, number] { Send(batch, number); }, Qt::QueuedConnection);
    changed.wait(locked, [this] { return arrived.has_value() || stopped; });
    return arrived.value_or(false);
}

void UsageReports::Send(const UsageMonitor::Batch& batch, quint64 number)
{
    {
        const std::lock_guard<std::mutex> locked(mutex);
        if (number != lastBatch)
            return;
    }
    QJsonArray events;
    for (const QByteArray& event : batch)
        events.append(WhatIsSent(QJsonDocument::fromJson(event).object()));
    client.Send(SendUsageEventsRequest{events}, this, [this, number](const auto& result) {
        SetArrived(number, result.success || IsUseless(result.errorCode));
    });
}

void UsageReports::SetArrived(quint64 number, bool isThere)
{
    {
        const std::lock_guard<std::mutex> locked(mutex);
        if (number == lastBatch)
            arrived = isThere;
    }
    changed.notify_all();
}
