// SPDX-License-Identifier: Apache-2.0

#include "UsageMonitor_p.h"

UsageMonitor::UsageMonitor() : d(std::make_unique<Private>()) {}

UsageMonitor::~UsageMonitor()
{
    Stop();
}

UsageMonitor* UsageMonitor::Instance()
{
    static UsageMonitor instance;
    return &instance;
}

void UsageMonitor::Start(const Settings& settings, Sink sink)
{
    Stop();
    {
        const std::lock_guard<std::mutex> locked(d->mutex);
        d->settings = settings;
        d->sink = std::move(sink);
        d->pause = settings.interval;
        d->stopping = false;
    }
    d->worker.reset(QThread::create([this] { d->Run(); }));
    d->worker->start();
}

void UsageMonitor::Stop()
{
    if (!d->worker)
        return;
    {
        const std::lock_guard<std::mutex> locked(d->mutex);
        d->stopping = true;
    }
    d->wake.notify_all();
    d->worker->wait();
    d->worker.reset();
}

void UsageMonitor::SetEnabled(bool enabled)
{
    {
        const std::lock_guard<std::mutex> locked(d->mutex);
        d->enabled = enabled;
        d->emptying = d->emptying || !enabled;
        if (!enabled)
            d->incoming.clear();
    }
    d->wake.notify_all();
}

bool UsageMonitor::IsEnabled() const
{
    const std::lock_guard<std::mutex> locked(d->mutex);
    return d->enabled;
}

void UsageMonitor::Flush()
{
    {
        const std::lock_guard<std::mutex> locked(d->mutex);
        d->flushing = true;
    }
    d->wake.notify_all();
}

void UsageMonitor::Private::Add(const QByteArray& event)
{
    {
        const std::lock_guard<std::mutex> locked(mutex);
        if (!enabled)
            return;
        if (incoming.size() >= settings.maxEvents)
            incoming.removeFirst();
        incoming.append(event);
    }
    wake.notify_all();
}

void UsageMonitor::Private::Run()
{
    std::unique_lock<std::mutex> locked(mutex);
    locked.unlock();
    queue.Open(settings.folder, settings.maxEvents);
    locked.lock();

    auto nextBatch = std::chrono::steady_clock::now() + pause;
    for (;;) {
        wake.wait_until(locked, nextBatch,
                        [this] { return stopping || flushing || emptying || !incoming.isEmpty(); });

        Batch arrived;
        arrived.swap(incoming);
        const bool empty = std::exchange(emptying, false);
        locked.unlock();
        if (empty)
            queue.Clear();
        if (!arrived.isEmpty())
            queue.Append(arrived);
        locked.lock();

        if (stopping)
            break;
        if (std::exchange(flushing, false) || std::chrono::steady_clock::now() >= nextBatch) {
            SendBatch(locked);
            nextBatch = std::chrono::steady_clock::now() + pause;
        }
    }
    locked.unlock();
    queue.Close();
}

void UsageMonitor::Private::SendBatch(std::unique_lock<std::mutex>& locked)
{
    locked.unlock();
    const Batch batch = queue.GetFirst(settings.batchSize);
    const bool sent = sink && !batch.isEmpty() && sink(batch);
    if (sent)
        queue.RemoveFirst(batch.size());
    locked.lock();

    const bool failed = sink && !batch.isEmpty() && !sent;
    pause = failed ? qMin(pause * 2, settings.maxInterval) : settings.interval;
}
