// SPDX-License-Identifier: Apache-2.0

#include "UsageRules.h"

#include <QHash>

namespace server::rules
{
namespace
{
constexpr qint64 mostOfADay = 2000;
}

void KeepUsage(Transaction& store, const Account& account, const std::vector<UsageEvent>& events)
{
    QHash<qint64, qint64> kept; // by day
    for (const UsageEvent& event : events) {
        if (!kept.contains(event.day))
            kept.insert(event.day, store.UsageOn(account.pin, event.day));
        qint64& ofDay = kept[event.day];
        if (ofDay < mostOfADay && store.InsertUsage(account.pin, event))
            ++ofDay;
    }
}
} // namespace server::rules
