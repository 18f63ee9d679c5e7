// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CheckedApp_p.h"
#include "ProblemList_p.h"

// The checkers, a file each. Pure: they see the copy and add what they find. The table in
// RpaProblemFinder.cpp says which of them look at which kind of app.
namespace Checkers
{
void FindRunStoppers(const CheckedApp& app, ProblemList& found);
void FindUnknownArguments(const CheckedApp& app, ProblemList& found);
void FindUnusedVariables(const CheckedApp& app, ProblemList& found);
void FindUnreachableSteps(const CheckedApp& app, ProblemList& found);
void FindEndlessRecursion(const CheckedApp& app, ProblemList& found);
void FindToolProblems(const CheckedApp& app, ProblemList& found);
void FindUnreadParameters(const CheckedApp& app, ProblemList& found);
void FindEmptyChoices(const CheckedApp& app, ProblemList& found);
void FindPackageProblems(const CheckedApp& app, ProblemList& found);
void FindUnusedElements(const CheckedApp& app, ProblemList& found);
void FindDeadLinks(const CheckedApp& app, ProblemList& found);

// The place of a statement.
RpaProblemPlace At(const RpaProcess& process, const RpaStatementNode& node);
} // namespace Checkers
