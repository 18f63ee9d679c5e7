// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../store/Store.h"

#include <QHash>

#include <mutex>

namespace server
{
enum class SessionLife
{
    Usual,   // ends when not used for 12 hours, at the latest after 7 days
    Staying, // ends after 30 days, used or not
};

struct SignedIn
{
    Account account;
    qint64 expiresAt = 0;
};

// Who stands behind a token. Tokens are known by their hash only: kept in the store for accounts with a
// password, in memory for those of the embedded server. Any thread.
class Sessions
{
public:
    explicit Sessions(Store& theStore) : store(theStore) {}

    // A token that lives as long as this process and never sees the disk.
    void AddForThisProcess(const QByteArray& token, const Account& account);

    // Blocks until it is committed.
    SignedIn Open(const Account& account, SessionLife life, QByteArray& newToken);

    std::optional<SignedIn> Find(const QByteArray& token);               // may ask the store
    std::optional<Account> AccountWithoutStore(const QByteArray& token); // if known; never blocks
    void Close(const QByteArray& token);

private:
    struct Entry
    {
        SignedIn session;
        qint64 lastUsedAt = 0;
        qint64 writtenAt = 0;   // when lastUsedAt went to the store
        qint64 checkedAt = 0;   // when the store was last asked
        bool ofProcess = false; // not in the store
    };

    std::optional<SignedIn> Load(const QByteArray& hash, qint64 now);
    std::optional<SignedIn> Keep(const QByteArray& hash, const Entry& entry, quint64 closingsBefore);
    void ForgetStored();
    void WriteUse(const QByteArray& hash, qint64 now);

    Store& store;
    std::mutex mutex;
    QHash<QByteArray, Entry> entries; // by hash of the token
    quint64 closings = 0;             // sessions that were closed here so far
};
} // namespace server
