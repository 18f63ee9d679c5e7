// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Thread.h"

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace server
{
// How long a call to the database may last.
class ICallLimit
{
public:
    virtual ~ICallLimit() = default;
    virtual void Begin(std::chrono::milliseconds allowed) = 0;
    virtual void End() = 0;
};

// Ends calls of a database client that waits for its answer without a limit of its own: shuts the socket
// down, upon which the client reports a lost connection. Any thread.
class StallGuard
{
public:
    StallGuard();
    ~StallGuard();

    // `socket` is the client's and open; what is handed out must go before this guard.
    std::unique_ptr<ICallLimit> Guard(int socket);

private:
    class Line;

    void Work();
    void Forget(const Line* line);

    std::mutex mutex;
    std::condition_variable changed;
    std::vector<Line*> lines;
    bool ending = false;
    Thread watcher;
};
} // namespace server
