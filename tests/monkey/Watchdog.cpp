// SPDX-License-Identifier: Apache-2.0

#include "Watchdog.h"

#include <cstdio>
#include <cstdlib>

namespace
{
qint64 NowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}
} // namespace

Watchdog::Watchdog(std::chrono::seconds patience)
    : last(NowMs()), thread([this, patience] { Watch(patience); })
{
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        end = true;
    }
    ended.notify_all();
    thread.join();
}

void Watchdog::Beat()
{
    const qint64 now = NowMs();
    longest = qMax(longest.load(), now - last.load());
    last = now;
}

void Watchdog::Watch(std::chrono::seconds patience)
{
    const qint64 most = std::chrono::milliseconds(patience).count();
    std::unique_lock<std::mutex> lock(mutex);
    while (!ended.wait_for(lock, std::chrono::milliseconds(500), [this] { return end; })) {
        if (NowMs() - last > most) {
            std::fprintf(stderr, "monkey: the GUI thread has been stuck for %lld s\n",
                         static_cast<long long>(patience.count()));
            std::abort();
        }
    }
}
