// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>

// Hands out names so that no two are alike, without searching the others for each: lists that come from a
// file may hold any number of nameless or equal ones.
class WBFOUNDATION_EXPORT FreeNames
{
public:
    // Takes the name; false when it is blank or taken already.
    bool Take(const QString& name);

    // Takes and gives the stem with the smallest free number behind it, from first on.
    QString TakeNumbered(const QString& stem, int first = 1);

    // The name, or with the first number from 2 on behind it that makes it free; at most `most` characters.
    static QString FirstFree(const QString& name, int most,
                             const std::function<bool(const QString& tried)>& isTaken);

    // The name with the ending, cut before it to `most` characters.
    static QString WithEnding(const QString& name, const QString& ending, int most);

private:
    QSet<QString> taken;
    QHash<QString, int> next; // stem -> number to try
};
