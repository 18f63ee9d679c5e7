// SPDX-License-Identifier: Apache-2.0

#include "StallGuard.h"

#include <algorithm>
#include <sys/socket.h>
#include <unistd.h>

namespace server
{
namespace
{
constexpr auto betweenLooks = std::chrono::milliseconds(250);

qint64 SteadyMs()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
} // namespace

// Has a descriptor of its own, because the client may close its socket, and another one get its number, at
// any moment.
class StallGuard::Line : public ICallLimit
{
public:
    Line(StallGuard& theGuard, int theSocket) : guard(theGuard), socket(::dup(theSocket)) {}
    ~Line() override
    {
        guard.Forget(this);
        ::close(socket);
    }

    void Begin(std::chrono::milliseconds allowed) override { endMs = SteadyMs() + allowed.count(); }
    void End() override { endMs = 0; }

    void EndIfLate(qint64 nowMs)
    {
        const qint64 end = endMs;
        if (end != 0 && end <= nowMs)
            ::shutdown(socket, SHUT_RDWR);
    }

private:
    StallGuard& guard;
    const int socket;
    std::atomic<qint64> endMs{0}; // 0: no call
};

StallGuard::StallGuard() : watcher([this] { Work(); }) {}

StallGuard::~StallGuard()
{
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    changed.notify_one();
    watcher.Join();
}

std::unique_ptr<ICallLimit> StallGuard::Guard(int socket)
{
    auto line = std::make_unique<Line>(*this, socket);
    const std::lock_guard lock(mutex);
    lines.push_back(line.get());
    return line;
}

void StallGuard::Forget(const Line* line)
{
    const std::lock_guard lock(mutex);
    lines.erase(std::remove(lines.begin(), lines.end(), line), lines.end());
}

void StallGuard::Work()
{
    std::unique_lock lock(mutex);
    while (!changed.wait_for(lock, betweenLooks, [this] { return ending; })) {
        const qint64 now = SteadyMs();
        for (Line* line : lines)
            line->EndIfLate(now);
    }
}
} // namespace server
