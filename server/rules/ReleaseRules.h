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
// Moves a version from develop to gray, or from develop or gray to online, and notes who did it. Reaching the
// users of a released version (invitation codes, the list of online apps) builds on the entries noted here.
Outcome<ReleaseResult> ReleaseVersion(ITransaction& store, const Account& account, const QString& versionId,
                                      qint64 basedOnRevision, ReleaseType type, qint64 now);
} // namespace rules
} // namespace server
