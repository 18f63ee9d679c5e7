// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcess.h>

#include <QStringList>

class ProcessEdits;

// Statements that become a process of their own, and a process that comes back in the place of its call, one
// undo step each. All processes of a run share their variables, so that what is set and read stays the same.
// What cannot be done gives the reason, in Chinese.
namespace SubProcessEdits
{
// Empty when the statements mean the same elsewhere.
QString ExtractProblem(const RpaProcess& process, const QStringList& ids);
// Puts the statements, which keep their ids, into a new process of that name, and a call in their place.
void Extract(ProcessEdits& edits, RpaProcess& process, const QStringList& ids, const QString& name);

// Puts copies of what the called process holds in the place of the call. The process stays.
QString Inline(ProcessEdits& edits, RpaProcess& process, const QStringList& ids);
} // namespace SubProcessEdits
