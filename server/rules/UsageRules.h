// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../store/Store.h"

namespace server
{
// Events of former days are removed, and no longer taken, after so many.
constexpr qint64 usageKeptDays = 90;

namespace rules
{
// Keeps what the account did, each event once however often it comes. A day of an account holds a bounded
// number of them; what goes beyond is left out.
void KeepUsage(Transaction& store, const Account& account, const std::vector<UsageEvent>& events);
} // namespace rules
} // namespace server
