// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>
#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessData/RpaStatement.h>

class RpaAppData;

// What the check before a run, or the run, found in an app, less what has been mended since. GUI thread.
class RunFindings
{
public:
    // In the place of what was found before; findings that are of another app are passed over.
    void Take(const QList<RpaCheckInfo>& list, const RpaAppData* app);

    // Drops what is mended. The problems are those of the app as it is now.
    void Compare(const QVector<RpaProblem>& now, const RpaAppData* app);

    QVector<RpaProblem> Get() const;

private:
    struct Finding
    {
        RpaProblem problem;
        RpaStatement atFault;  // as it was then
        QString programText;   // likewise
        bool isListed = false; // among the problems of the app, which then say whether it stands
    };

    static bool DoesTheSame(const Finding& finding, const RpaAppData* app);

    QVector<Finding> findings;
};
