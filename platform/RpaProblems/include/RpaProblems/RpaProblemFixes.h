// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>
#include <RpaProcessData/RpaStatement.h>

class RpaAppData;

// Makes the fixes of problems (RpaProblem::fix). Those inside processes are given as values, so that the editor
// makes an undo step of them. GUI thread.
namespace RpaProblemFixes
{
// ListPackage, UnlistPackage, ClearProcess: changes the app and marks it modified. False when the fix is
// another one, or when the app changed so that there is nothing to mend any more.
RPAPROBLEMS_EXPORT bool MakeInApp(RpaAppData& app, const RpaProblem& problem);

// RemoveArgument: changes the statement. False as above.
RPAPROBLEMS_EXPORT bool MakeInStatement(RpaStatement& statement, const RpaProblem& problem);

// CreateVariable: the statement that gives the variable an empty value.
RPAPROBLEMS_EXPORT RpaStatement MakeVariable(const RpaProblem& problem);
} // namespace RpaProblemFixes
