// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionRules.h"

namespace server
{
// What an author decides about what users have.
struct TakeBackOrder
{
    VersionState state = VersionState::Online; // gray or online
    QString from;                              // the version users have by what the author saw; empty: none
    QString to;                                // the one that they shall have; empty: none
    QString reason;
};

namespace rules
{
// Gives users another version of the state that was released before, or none. All others of that state are
// taken back, so that no deletion or restoration brings one of them to users again. Nothing is lost, and a
// version that was taken back may be given to users once more in the same way. Done already changes nothing;
// refused when users have another version by now than the author saw. Ends with the id of what users have.
QString TakeBack(Transaction& store, const Account& account, const QString& appId, const TakeBackOrder& order,
                 qint64 now);
} // namespace rules
} // namespace server
