// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

class RpaAppData;

// One thing that goes to whoever gets the app, and may be nobody else's business: a value that was filled in,
// the rows of a table, a password in a step.
struct TakenAlong
{
    enum class Kind
    {
        Value,
        Rows,
        Password,
    };

    Kind kind = Kind::Value;
    QString where; // as the author knows it
    QString what;
    int page = -1;   // of Value and Rows
    int param = -1;  // of Value
    QString process; // of Password
    QString statement;
    QString argument;

    // Passwords first.
    static QVector<TakenAlong> Of(const RpaAppData& app);
    // Takes it out of the app: the value and the rows go, the password becomes a parameter that every user
    // enters. The order of the pages, parameters and steps is as it was when Of() was asked.
    void TakeOut(RpaAppData& app) const;
};
