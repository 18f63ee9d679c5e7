// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

// Statements on the database of the history. What fails says why in the user's words.
class RunSql
{
public:
    // Not active when it failed.
    QSqlQuery Query(const QString& statement, const QVariantList& values, QString* problem);
    bool Run(const QString& statement, const QVariantList& values, QString* problem);
    // Everything that act does, or nothing.
    template <typename Act>
    bool Together(const Act& act, QString* problem)
    {
        if (!BeginTogether(problem))
            return false;
        const bool went = act();
        return EndTogether(went, problem);
    }

    QSqlDatabase db;
    bool isDamaged = false; // the file is no database any more

private:
    bool BeginTogether(QString* problem);
    bool EndTogether(bool went, QString* problem);
};
