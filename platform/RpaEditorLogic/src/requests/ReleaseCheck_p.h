// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

// Whether users could run what is to be released.
namespace ReleaseCheck
{
// The first thing for which a run of the app would be refused, in the author's words: a finding of the check
// that goes before each run, in any process that a button starts, or a button without its process. Empty when
// there is none, and for an app in Python, which is not checked before a run either. Any thread.
QString FindProblem(const QByteArray& appJson);
} // namespace ReleaseCheck
