// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// What the editor did to the world around it, in order: every stand-in notes what it was asked for.
namespace CallLog
{
void Note(const QString& call);

// What was noted since the last Take().
QStringList Take();

// The next time that this is noted, the world does something of its own before the editor goes on; or the
// test looks how far the editor has come.
void WhenNoted(const QString& call, const std::function<void()>& meanwhile);
} // namespace CallLog
