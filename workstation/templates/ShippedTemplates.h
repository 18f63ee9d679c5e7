// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// The templates that come with the workstation.
namespace ShippedTemplates
{
// Puts each into its folder, once in the life of the data folder: what the author deletes or changes stays
// so. A file that is there already is left alone. False when a file could not be written; the next call tries
// again.
bool Install(const QString& visualDir, const QString& programDir, const QString& dataDir);
} // namespace ShippedTemplates
