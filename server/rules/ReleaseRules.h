// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionRules.h"

namespace server
{
enum class ReleaseType : int
{
    Gray = 1,
    Online = 2
};

struct ReleaseResult
{
    Version version;
    bool tookEffect = false;
    bool needTip = false;
    QString message; // why it did not take effect
};

namespace rules
{
// Moves a version from develop to gray, or from develop or gray to online, and notes who did it. No version
// ever goes back: an app may have several gray and several online versions, and its users see the one of each
// state that was released last. Deleting that one brings the former back to them. A gray release sees to it
// that the app has an open invitation. The last develop version leaves a copy of itself, "版本N" with the
// first N that is free.
ReleaseResult ReleaseVersion(Transaction& store, const Account& account, const QString& versionId,
                             qint64 basedOnRevision, ReleaseType type, qint64 now);
} // namespace rules
} // namespace server
