// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

// What may be typed at a place.
struct CompletionItem
{
    QString name;
    QString kind; // as jedi calls it, or "word"
};
using CompletionItems = QVector<CompletionItem>;

namespace CompletionLists
{
// Of an answer of the helper; what is no name in it is left out.
CompletionItems Of(const QVariantMap& answer);
CompletionItems OfWords(const QStringList& words);

// Those that begin with what was typed (in its own case first, then in any), then those that contain it. Names with
// an underscore in front only when one was typed.
CompletionItems Filter(const CompletionItems& items, const QString& typed);

// For the author.
QString KindText(const QString& kind);
} // namespace CompletionLists
