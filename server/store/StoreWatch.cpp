// SPDX-License-Identifier: Apache-2.0

#include "StoreWatch.h"

#include "../base/Clock.h"
#include "../sql/SqlConnection.h"

namespace server
{
namespace
{
constexpr auto betweenQuestions = std::chrono::seconds(1);
constexpr qint64 patienceMs = 5000;
} // namespace

StoreWatch::StoreWatch(std::shared_ptr<const IDialect> theDialect)
    : dialect(std::move(theDialect)), watcher([this] { Work(); })
{
}

StoreWatch::~StoreWatch()
{
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    changed.notify_one();
    watcher.Join();
}

bool StoreWatch::Answers() const
{
    const qint64 asked = askedAtMs;
    return answered && (asked == 0 || SteadyNowMs() - asked < patienceMs);
}

void StoreWatch::Work()
{
    std::unique_lock lock(mutex);
    while (!changed.wait_for(lock, betweenQuestions, [this] { return ending.load(); })) {
        lock.unlock();
        askedAtMs = SteadyNowMs();
        answered = Ask();
        askedAtMs = 0;
        lock.lock();
    }
    lock.unlock();
    connection.reset();
}

// A connection that was cut is no store that does not answer.
bool StoreWatch::Ask()
{
    return AskOnce() || (connection && connection->IsLost() && !ending && AskOnce());
}

bool StoreWatch::AskOnce()
{
    try {
        if (!connection)
            connection = std::make_unique<SqlConnection>(dialect);
        else if (connection->IsLost())
            connection->Reopen();
        return connection->Select(QStringLiteral("SELECT version FROM schema_info"), {}).Next();
    } catch (const StoreError&) {
        return false;
    }
}
} // namespace server
