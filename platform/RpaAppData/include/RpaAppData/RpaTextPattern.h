// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QString>
#include <QVector>

// The forms that a text may have to have: regular expressions, some of which have a name. Whoever wrote one,
// matching ends in no time.
struct RPAAPPDATA_EXPORT RpaTextPattern
{
    QString title;      // "手机号码"
    QString expression; // for the whole text
    QString example;

    // Those with a name, in the order in which they are offered.
    static const QVector<RpaTextPattern>& GetKnown();
    // The known one of this expression; nothing in it but the expression when there is none.
    static RpaTextPattern Find(const QString& expression);

    // Whether an expression can be used: it is one, and not too long.
    static bool IsUsable(const QString& expression);
    // Whether the whole text is of the expression; an unusable one takes every text.
    static bool Matches(const QString& expression, const QString& text);
};
