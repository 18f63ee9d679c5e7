// SPDX-License-Identifier: Apache-2.0

#include "RpaAppNotify.h"

#include <QMutex>
#include <QMutexLocker>

#include <atomic>

namespace
{

QMutex instanceMutex;
std::atomic<RpaAppNotify*> instance{nullptr};

// Its destructor is the exit hook: it is made by the first Instance(), hence after the mutex, and goes before
// it.
struct ReleaseAtExit
{
    ~ReleaseAtExit() { RpaAppNotify::Release(); }
};

} // namespace

RpaAppNotify::RpaAppNotify(QObject* parent) : QObject(parent) {}

RpaAppNotify::~RpaAppNotify() = default;

RpaAppNotify* RpaAppNotify::Instance()
{
    static const ReleaseAtExit releaseAtExit;

    if (RpaAppNotify* existing = instance.load(std::memory_order_acquire))
        return existing;
    const QMutexLocker lock(&instanceMutex);
    RpaAppNotify* notify = instance.load(std::memory_order_relaxed);
    if (!notify) {
        notify = new RpaAppNotify(nullptr);
        instance.store(notify, std::memory_order_release);
    }
    return notify;
}

void RpaAppNotify::Release()
{
    if (!instance.load(std::memory_order_acquire))
        return;
    const QMutexLocker lock(&instanceMutex);
    delete instance.exchange(nullptr, std::memory_order_acq_rel);
}
