// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>

#include <QByteArray>

#include <optional>

// What the child process says about a program, as problems. It may have been written by anybody, since the
// child imports what lies on this machine: lines are checked against the program, texts are cut, kinds that are
// not known are shown as they came.
namespace ProgramReport
{
// Nothing when it is no report.
std::optional<QVector<RpaProblem>> Read(const QByteArray& json, const QString& program,
                                        const QString& processName);
} // namespace ProgramReport
