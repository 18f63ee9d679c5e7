// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaDebugTypes.h>

#include <optional>

// Where the breakpoints of apps are kept: a file for each app in the folder "breakpoints" of the program's
// local data. An app without an id has none. GUI thread; the disk is written by another one.
namespace BreakpointFile
{
// What was written last; none when nothing is kept or it cannot be read.
std::optional<QVector<RpaBreakpoint>> Read(const QString& appId);
void Write(const QString& appId, const QVector<RpaBreakpoint>& points);
// Returns when everything is on the disk.
void Finish();
// What was read or written is read from the disk again.
void Forget();
} // namespace BreakpointFile
