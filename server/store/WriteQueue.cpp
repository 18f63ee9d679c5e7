// SPDX-License-Identifier: Apache-2.0

#include "WriteQueue.h"

#include "Transaction.h"

#include <algorithm>

namespace server
{
namespace
{
constexpr std::size_t maximalWaiting = 2000;
constexpr qint64 maximalWaitingBytes = 512LL * 1024 * 1024;
constexpr std::size_t maximalGroup = 256;
constexpr qint64 maximalGroupBytes = 64LL * 1024 * 1024;
constexpr auto longestGap = std::chrono::milliseconds(2);
constexpr auto longestGathering = std::chrono::milliseconds(20);

const QString savepoint = QStringLiteral("SAVEPOINT one_write");
const QString release = QStringLiteral("RELEASE SAVEPOINT one_write");
const QString rollbackToSavepoint = QStringLiteral("ROLLBACK TO SAVEPOINT one_write");

// A full disk ends the whole transaction in SQLite: there is no savepoint to go back to, and the neighbours
// would be told of that instead.
bool EndsTransaction(const std::exception_ptr& failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const StoreError& error) {
        return error.Fault() == StoreFault::Full;
    } catch (...) {
        return false;
    }
}
} // namespace

WriteQueue::WriteQueue(std::shared_ptr<const IDialect> theDialect,
                       std::function<void(const std::vector<QString>&)> onCommitted,
                       std::function<bool()> theAnswers)
    : dialect(std::move(theDialect)), committed(std::move(onCommitted)), answers(std::move(theAnswers)),
      writer([this] { Work(); })
{
}

WriteQueue::~WriteQueue()
{
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    changed.notify_one();
    writer.Join();
}

bool WriteQueue::Submit(Write write)
{
    {
        const std::lock_guard lock(mutex);
        if (ending || waiting.size() >= maximalWaiting || waitingBytes > maximalWaitingBytes)
            return false;
        waitingBytes += write.bytes;
        waiting.push_back(std::move(write));
    }
    changed.notify_one();
    return true;
}

WriterFigures WriteQueue::Figures() const
{
    const std::lock_guard lock(mutex);
    return figures;
}

void WriteQueue::Work()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ending || !waiting.empty(); });
        if (waiting.empty())
            break;
        Gather(lock);
        Group group = TakeGroup();
        lock.unlock();
        const auto start = std::chrono::steady_clock::now();
        const Failures failures = Commit(group);
        lock.lock();
        commitTime = std::chrono::steady_clock::now() - start;
        expected = std::min(group.size() + waiting.size(), maximalGroup);
        ++figures.commits;
        figures.writes += static_cast<qint64>(group.size());
        figures.largestGroup = std::max(figures.largestGroup, static_cast<qint64>(group.size()));
        figures.failures +=
            std::count_if(failures.begin(), failures.end(), [](const auto& f) { return f != nullptr; });
        lock.unlock();
        for (std::size_t i = 0; i < group.size(); ++i)
            group[i].done(failures[i]);
        group.clear();
        lock.lock();
    }
    lock.unlock();
    connection.reset();
}

// A commit costs about the same for one write as for many. So when several clients are at work, those that
// were just answered get the chance to join the next commit: for less time than a commit takes, and only as
// long as writes keep coming in. A client that is alone never waits.
void WriteQueue::Gather(std::unique_lock<std::mutex>& lock)
{
    const auto start = std::chrono::steady_clock::now();
    const auto end = start + std::min<Duration>(commitTime / 2, longestGathering);
    const Duration gap = std::min<Duration>(commitTime / 4, longestGap);
    const auto isFull = [this] { return waiting.size() >= expected || waitingBytes >= maximalGroupBytes; };
    while (!ending && !isFull()) {
        const std::size_t before = waiting.size();
        changed.wait_until(lock, std::min(end, std::chrono::steady_clock::now() + gap),
                           [&] { return ending || waiting.size() > before; });
        if (waiting.size() == before || std::chrono::steady_clock::now() >= end)
            return;
    }
}

WriteQueue::Group WriteQueue::TakeGroup()
{
    Group group;
    qint64 bytes = 0;
    while (!waiting.empty() && group.size() < maximalGroup && bytes < maximalGroupBytes) {
        bytes += waiting.front().bytes;
        group.push_back(std::move(waiting.front()));
        waiting.pop_front();
    }
    waitingBytes -= bytes;
    return group;
}

SqlConnection& WriteQueue::Connected()
{
    if (!answers())
        throw StoreError(StoreFault::Unavailable, QStringLiteral("the database does not answer"));
    if (!connection)
        connection = std::make_unique<SqlConnection>(dialect);
    else if (connection->IsLost())
        connection->Reopen();
    return *connection;
}

WriteQueue::Failures WriteQueue::Commit(Group& group)
{
    Failures failures(group.size());
    std::vector<QString> changedIds;
    try {
        Connected().Execute(dialect->BeginWrite());
        TakeLocks(group);
        Apply(group, failures, changedIds);
        connection->Execute(QStringLiteral("COMMIT"));
    } catch (...) {
        // Whether a lost commit took place is not known here; the repeated request finds out by its key.
        for (auto& failure : failures)
            failure = failure ? failure : std::current_exception();
        if (connection && !connection->IsLost())
            connection->TryExecute(QStringLiteral("ROLLBACK"));
    }
    committed(changedIds);
    return failures;
}

void WriteQueue::TakeLocks(const Group& group)
{
    const IDialect::Locks locks = dialect->LockForWrite();
    if (locks.alone.isEmpty())
        return;
    QStringList names;
    bool isAllKnown = true;
    for (const Write& write : group) {
        isAllKnown = isAllKnown && !write.touched.isEmpty();
        names += write.touched;
    }
    connection->Select(isAllKnown ? locks.along : locks.alone, {}).Next();
    if (isAllKnown)
        connection->Select(locks.names, {names.join(QLatin1Char('\n'))}).Next();
}

void WriteQueue::Apply(Group& group, Failures& failures, std::vector<QString>& changedIds)
{
    Transaction transaction(*connection, *dialect, changedIds);
    for (std::size_t i = 0; i < group.size(); ++i) {
        connection->Execute(savepoint);
        try {
            group[i].act(transaction);
        } catch (...) {
            failures[i] = std::current_exception();
            if (connection->IsLost() || EndsTransaction(failures[i]))
                throw;
            connection->Execute(rollbackToSavepoint);
        }
        connection->Execute(release);
    }
}
} // namespace server
