// SPDX-License-Identifier: Apache-2.0

#include "BodyBudget.h"

namespace server
{
namespace
{
template <typename Key>
void AddTo(QHash<Key, qint64>& table, const Key& key, qint64 bytes)
{
    if ((table[key] += bytes) == 0)
        table.remove(key);
}
} // namespace

BodyBudget::Share::Share(BodyBudget& theBudget, QByteArray theAddress)
    : budget(theBudget), address(std::move(theAddress))
{
}

BodyBudget::Share::~Share()
{
    Release();
}

bool BodyBudget::Share::HoldRequest(const QString& name, qint64 bytes)
{
    return Hold(name, bytes, budget.limits.total);
}

bool BodyBudget::Share::HoldAnswer(const QString& name, qint64 bytes)
{
    return Hold(name, bytes, budget.limits.total / 4 * 3);
}

bool BodyBudget::Share::Hold(const QString& name, qint64 bytes, qint64 total)
{
    const qint64 wanted = bytes <= freeBytes ? 0 : bytes;
    if (wanted == held && (held == 0 || name == account))
        return true;
    const std::lock_guard lock(budget.mutex);
    budget.Add(address, account, -held);
    const bool fits = budget.used + wanted <= total &&
                      budget.byAddress.value(address) + wanted <= budget.limits.perAddress &&
                      (name.isEmpty() || budget.byAccount.value(name) + wanted <= budget.limits.perAccount);
    if (fits || wanted == 0) {
        account = name;
        held = wanted;
    }
    budget.Add(address, account, held);
    return fits || wanted == 0;
}

void BodyBudget::Share::Release()
{
    Hold({}, 0, 0);
}

qint64 BodyBudget::Used() const
{
    const std::lock_guard lock(mutex);
    return used;
}

void BodyBudget::Add(const QByteArray& address, const QString& account, qint64 bytes)
{
    if (bytes == 0)
        return;
    used += bytes;
    AddTo(byAddress, address, bytes);
    if (!account.isEmpty())
        AddTo(byAccount, account, bytes);
}
} // namespace server
