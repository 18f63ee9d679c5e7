// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>

#include <QHash>
#include <QString>

// The problems that the author has put aside, each with the reason, by app. They lie in an INI file of this
// machine, not in the app. GUI thread only.
class RPAPROBLEMS_EXPORT RpaProblemIgnores
{
public:
    // Reads them. An app without an id (one that was never saved) has none, and none are kept for it.
    RpaProblemIgnores(const QString& file, const QString& appId);

    // Empty when it is not ignored.
    QString GetReason(const RpaProblem& problem) const;
    // False when the reason is blank, when the problem is an error, which no reason lets pass, or when it
    // could not be written.
    bool Ignore(const RpaProblem& problem, const QString& reason);
    void TakeBack(const RpaProblem& problem);

    // Beside the other settings of this program.
    static QString GetUsualFile();

private:
    QString file;
    QString group;
    QHash<QString, QString> reasons; // by ids of problems
};
