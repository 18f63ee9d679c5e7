// SPDX-License-Identifier: Apache-2.0

#include "Housekeeper.h"

#include "../base/Clock.h"
#include "../rules/UsageRules.h"

namespace server
{
namespace
{
constexpr qint64 answersKeptMs = 7 * dayMs;
}

Housekeeper::Housekeeper(Store& theStore, Log& theLog, std::chrono::seconds theEvery)
    : store(theStore), log(theLog), every(theEvery), worker([this] { Work(); })
{
}

Housekeeper::~Housekeeper()
{
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    changed.notify_one();
    worker.Join();
}

void Housekeeper::Work()
{
    std::unique_lock lock(mutex);
    do {
        lock.unlock();
        TidyUp();
        lock.lock();
    } while (!changed.wait_for(lock, every, [this] { return ending; }));
}

void Housekeeper::TidyUp()
{
    const qint64 now = SteadyNowMs();
    bool isTidy = false;
    try {
        // Saves come in between.
        while (!isTidy)
            store.SubmitAndWait([&](Transaction& transaction) {
                isTidy = transaction.RemoveOutdated(now, now - answersKeptMs, now / dayMs - usageKeptDays);
            });
    } catch (const StoreError& error) {
        log.Write(LogLevel::Warning, "not-tidied",
                  [&error](JsonText& line) { line.Member("reason", QString::fromUtf8(error.what())); });
    }
}
} // namespace server
