// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

#include <RpaProblems/RpaProblemFinder.h>

#include <array>

namespace
{
enum class Kinds
{
    Both,
    Visual, // what looks at statements
};

struct Checker
{
    void (*find)(const CheckedApp& app, ProblemList& found);
    Kinds kinds;
};

constexpr std::array<Checker, 11> checkers{{
    {Checkers::FindRunStoppers, Kinds::Visual},
    {Checkers::FindEndlessRecursion, Kinds::Visual},
    {Checkers::FindUnknownArguments, Kinds::Visual},
    {Checkers::FindUnreachableSteps, Kinds::Visual},
    {Checkers::FindUnusedVariables, Kinds::Visual},
    {Checkers::FindToolProblems, Kinds::Both},
    {Checkers::FindEmptyChoices, Kinds::Both},
    {Checkers::FindUnreadParameters, Kinds::Both},
    {Checkers::FindPackageProblems, Kinds::Both},
    {Checkers::FindUnusedElements, Kinds::Both},
    {Checkers::FindDeadLinks, Kinds::Both},
}};
} // namespace

QVector<RpaProblem> RpaProblemFinder::Find(const RpaAppCopy& copy, const IsStale& isStale)
{
    const CheckedApp app(copy);
    ProblemList found;
    for (const Checker& checker : checkers) {
        if (isStale && isStale())
            break;
        if (checker.kinds == Kinds::Both || !copy.isProgram)
            checker.find(app, found);
    }
    return found.Get();
}
