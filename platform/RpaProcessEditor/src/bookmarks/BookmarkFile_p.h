// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

// The bookmarks of an app on this machine: ids of statements, in the order in which they were set. They are
// the author's own and no part of the app. GUI thread; the disk is written elsewhere.
namespace BookmarkFile
{
// Empty for an app that has none, or no id yet.
QStringList Read(const QString& appId);
void Write(const QString& appId, const QStringList& ids);

// Waits until all is on the disk.
void Finish();
} // namespace BookmarkFile
