// SPDX-License-Identifier: Apache-2.0

#include "Sessions.h"

#include "../base/Clock.h"
#include "../base/Digest.h"
#include "../base/Ids.h"

#include <algorithm>

namespace server
{
namespace
{
constexpr qint64 minuteMs = 60 * 1000;
constexpr qint64 idleMs = 12 * 60 * minuteMs;
constexpr qint64 lifeMs = 7 * 24 * 60 * minuteMs;
constexpr qint64 stayingLifeMs = 30 * 24 * 60 * minuteMs;
constexpr qint64 processLifeMs = 3650LL * 24 * 60 * minuteMs;
constexpr qint64 trustMs =
    5 * 1000; // a session ended elsewhere is refused here after this time at the latest
constexpr qint64 writeUseMs = 5 * minuteMs;
constexpr int manyEntries = 20000;

bool IsStaying(const StoredSession& session)
{
    return session.expiresAt - session.createdAt > lifeMs;
}

bool HasEnded(const StoredSession& session, qint64 lastUsedAt, qint64 now)
{
    return session.expiresAt <= now || (!IsStaying(session) && lastUsedAt + idleMs <= now);
}
} // namespace

void Sessions::AddForThisProcess(const QByteArray& token, const Account& account)
{
    const qint64 now = SteadyNowMs();
    Entry entry;
    entry.session = {account, now + processLifeMs};
    entry.lastUsedAt = now;
    entry.ofProcess = true;
    const std::lock_guard lock(mutex);
    entries.insert(Sha256(token), entry);
}

SignedIn Sessions::Open(const Account& account, SessionLife life, QByteArray& newToken)
{
    newToken = NewToken();
    const qint64 now = SteadyNowMs();
    const StoredSession stored{Sha256(newToken), account.pin, now, now,
                               now + (life == SessionLife::Staying ? stayingLifeMs : lifeMs)};
    store.SubmitAndWait([&stored](Transaction& transaction) { transaction.InsertSession(stored); });
    return {account, stored.expiresAt};
}

std::optional<SignedIn> Sessions::Find(const QByteArray& token)
{
    const QByteArray hash = Sha256(token);
    const qint64 now = SteadyNowMs();
    std::unique_lock lock(mutex);
    const auto found = entries.find(hash);
    if (found == entries.end() || (!found->ofProcess && now - found->checkedAt >= trustMs)) {
        lock.unlock();
        return Load(hash, now);
    }
    found->lastUsedAt = now;
    const SignedIn session = found->session;
    if (found->ofProcess || now - found->writtenAt <= writeUseMs)
        return session;
    found->writtenAt = now;
    lock.unlock();
    WriteUse(hash, now);
    return session;
}

// Without the mutex: whoever is known must not wait for a store that answers late.
std::optional<SignedIn> Sessions::Load(const QByteArray& hash, qint64 now)
{
    std::unique_lock lock(mutex);
    const quint64 closingsBefore = closings;
    const qint64 usedHereAt = entries.value(hash).lastUsedAt;
    lock.unlock();
    const auto stored = store.FindSession(hash);
    const qint64 lastUsedAt = stored ? std::max(stored->lastUsedAt, usedHereAt) : 0;
    const bool lives = stored && !HasEnded(*stored, lastUsedAt, now);
    const auto account = lives ? store.FindAccount(stored->pin) : std::nullopt;
    if (account && account->closedAt == 0)
        return Keep(hash, {{*account, stored->expiresAt}, now, stored->lastUsedAt, now, false},
                    closingsBefore);
    lock.lock();
    entries.remove(hash);
    return std::nullopt;
}

// Not what was closed while the store was asked: that would live on here.
std::optional<SignedIn> Sessions::Keep(const QByteArray& hash, const Entry& entry, quint64 closingsBefore)
{
    const std::lock_guard lock(mutex);
    if (closings != closingsBefore)
        return entry.session;
    if (entries.size() > manyEntries)
        ForgetStored();
    entries.insert(hash, entry);
    return entry.session;
}

void Sessions::ForgetStored()
{
    for (auto it = entries.begin(); it != entries.end();)
        if (it->ofProcess)
            ++it;
        else
            it = entries.erase(it);
}

void Sessions::WriteUse(const QByteArray& hash, qint64 now)
{
    const auto touch = [hash, now](Transaction& transaction) { transaction.TouchSession(hash, now); };
    // Losing this note ends a session early at worst, so nobody waits for it.
    store.Submit({touch, [](const std::exception_ptr&) {}, 0});
}

std::optional<Account> Sessions::AccountWithoutStore(const QByteArray& token)
{
    const QByteArray hash = Sha256(token);
    const std::lock_guard lock(mutex);
    const auto found = entries.constFind(hash);
    return found == entries.constEnd() ? std::nullopt : std::optional(found->session.account);
}

void Sessions::Close(const QByteArray& token)
{
    const QByteArray hash = Sha256(token);
    store.SubmitAndWait([&hash](Transaction& transaction) { transaction.RemoveSession(hash); });
    const std::lock_guard lock(mutex);
    ++closings;
    entries.remove(hash);
}
} // namespace server
