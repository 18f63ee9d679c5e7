// SPDX-License-Identifier: Apache-2.0

#include "LoginLimit.h"

#include <algorithm>

namespace server
{
namespace
{
QByteArray PairOf(const QByteArray& account, const QByteArray& address)
{
    return account + '\0' + address;
}
} // namespace

LoginLimit::LoginLimit(const LoginRates& rates)
    : byPair(rates.perAccountAndAddress), byAddress(rates.perAddress), byAccount(rates.perAccount)
{
}

int LoginLimit::SecondsToWait(const QString& name, const QByteArray& address, TimePoint now)
{
    const QByteArray account = name.toUtf8();
    const QByteArray pair = PairOf(account, address);
    const std::lock_guard lock(mutex);
    const bool isFamiliar = familiar.contains(pair);
    const int wait = std::max({byAddress.SecondsToWait(address, now), byPair.SecondsToWait(pair, now),
                               isFamiliar ? 0 : byAccount.SecondsToWait(account, now)});
    if (wait > 0)
        return wait;
    byAddress.Count(address, now);
    byPair.Count(pair, now);
    if (!isFamiliar)
        byAccount.Count(account, now);
    return 0;
}

bool LoginLimit::IsFamiliar(const QString& account, const QByteArray& address) const
{
    const std::lock_guard lock(mutex);
    return familiar.contains(PairOf(account.toUtf8(), address));
}

void LoginLimit::Succeeded(const QString& account, const QByteArray& address)
{
    const QByteArray pair = PairOf(account.toUtf8(), address);
    const std::lock_guard lock(mutex);
    byPair.Forget(pair);
    if (familiar.contains(pair))
        return;
    if (familiarInOrder.size() >= mostFamiliar) {
        familiar.remove(familiarInOrder.front());
        familiarInOrder.pop_front();
    }
    familiar.insert(pair);
    familiarInOrder.push_back(pair);
}
} // namespace server
