// SPDX-License-Identifier: Apache-2.0

#include "JsonCursor_p.h"

#include <WbFoundation/JsonGuard.h>

bool JsonGuard::Check(const QByteArray& json, QString* reason, const JsonLimits& limits)
{
    JsonCursor cursor(json, limits);
    const bool good = cursor.Finish();
    if (!good && reason)
        *reason = cursor.GetReason();
    return good;
}
