// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TryTable.h"

#include <QSet>
#include <QString>

#include <mutex>

namespace server
{
// Tries a minute; 0: as many as they like.
struct LoginRates
{
    int perAccountAndAddress = 5;
    int perAddress = 30;
    int perAccount = 50; // from addresses from which nobody has signed in to it
};

// How often passwords, also of accounts that do not exist, and invitation codes may be tried. Tries from one
// address do not shut an account's owner out from another, and many addresses together do not shut her out
// from one that she has used. Any thread.
class LoginLimit
{
public:
    using TimePoint = TryTable::TimePoint;

    explicit LoginLimit(const LoginRates& rates = {});

    // 0 when the try may be made (and is counted), else the seconds after which to come back. The address may
    // be empty where it does not matter.
    int SecondsToWait(const QString& account, const QByteArray& address, TimePoint now);

    // Whether somebody has signed in to the account from there.
    bool IsFamiliar(const QString& account, const QByteArray& address) const;

    // The password was the right one.
    void Succeeded(const QString& account, const QByteArray& address);

private:
    static constexpr std::size_t mostFamiliar = 20000;

    mutable std::mutex mutex;
    TryTable byPair;
    TryTable byAddress;
    TryTable byAccount;
    QSet<QByteArray> familiar; // pairs of account and address with a right password
    std::deque<QByteArray> familiarInOrder;
};
} // namespace server
