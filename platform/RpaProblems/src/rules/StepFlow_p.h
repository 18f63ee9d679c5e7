// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaStatementNode.h>

// How a run goes from one statement to the next, as the commands' Python says.
namespace StepFlow
{
// The enabled statement behind the row of the parent; null when there is none.
const RpaStatementNode* NextEnabled(const RpaStatementNode& parent, int row);

// Whether no run comes past the statement, with the branches behind it: it leaves the loop or the process, it
// is a loop without an end, or each of its branches is such.
bool IsEnd(const RpaStatementNode& node);

// Whether it, or anything enabled inside it, may leave the process.
bool MayLeave(const RpaStatementNode& node);
} // namespace StepFlow
