// SPDX-License-Identifier: Apache-2.0

#include "Log.h"

#include "Clock.h"
#include "StandardError.h"

#include <algorithm>

namespace server
{
namespace
{
constexpr std::size_t maximalWaitingLines = 10000;
constexpr qint64 lastLinesMs = 1000;

const char* NameOf(LogLevel level)
{
    switch (level) {
    case LogLevel::Debug:
        return "debug";
    case LogLevel::Info:
        return "info";
    case LogLevel::Warning:
        return "warning";
    case LogLevel::Error:
        return "error";
    }
    return "error";
}
} // namespace

Log::Log(LogLevel leastLevel) : least(leastLevel), writer([this] { Drain(); }) {}

Log::~Log()
{
    {
        const std::lock_guard lock(mutex);
        endsAt = SteadyNowMs() + lastLinesMs;
        ending = true;
    }
    changed.notify_one();
    writer.Join();
}

JsonText Log::Start(LogLevel level, const char* event)
{
    JsonText line;
    line.BeginObject()
        .Member("time", NowMs())
        .Member("level", QString::fromLatin1(NameOf(level)))
        .Member("event", QString::fromLatin1(event));
    return line;
}

void Log::Enqueue(QByteArray line)
{
    {
        const std::lock_guard lock(mutex);
        if (lines.size() >= maximalWaitingLines) {
            ++dropped;
            return;
        }
        lines.push_back(std::move(line));
    }
    changed.notify_one();
}

void Log::Drain()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ending || !lines.empty(); });
        if (lines.empty())
            return;
        std::deque<QByteArray> batch;
        batch.swap(lines);
        if (dropped > 0)
            batch.push_back(R"({"level":"warning","event":"log-lines-dropped","count":)" +
                            QByteArray::number(std::exchange(dropped, 0)) + "}\n");
        lock.unlock();
        const auto hasGivenUp = [this] { return ending && SteadyNowMs() >= endsAt; };
        const bool isWritten = std::all_of(batch.begin(), batch.end(), [&](const QByteArray& line) {
            return WriteStandardError(line, hasGivenUp);
        });
        lock.lock();
        if (!isWritten && ending)
            return;
    }
}
} // namespace server
