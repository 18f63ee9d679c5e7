// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QString>

namespace Utils
{
// Compares dotted version numbers part by part as numbers ("1.10" is newer than "1.9"); a missing part counts
// as 0, an empty version is older than any other. Negative, zero or positive like strcmp.
WBFOUNDATION_EXPORT int CompareVersion(const QString& a, const QString& b);
} // namespace Utils
