// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaAppCopy.h>
#include <RpaProblems/RpaProblem.h>

#include <functional>

// Finds the problems of an app. What stops a run is found by the rules of RpaProcessCheck, the same that the
// checks before a run and before a release apply; everything else is a warning or a hint and stops nothing.
namespace RpaProblemFinder
{
// Asked between the checkers: true ends the search early, with what was found so far.
using IsStale = std::function<bool()>;

// All problems, those of processes first, each in the order of the app. Any thread; nobody may add commands
// to the catalogue meanwhile.
RPAPROBLEMS_EXPORT QVector<RpaProblem> Find(const RpaAppCopy& app, const IsStale& isStale = {});
} // namespace RpaProblemFinder
