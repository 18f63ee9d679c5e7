// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaValue.h>

#include <QString>
#include <QStringList>
#include <QVector>

// What fields offer to choose from.
struct FieldOffers
{
    QStringList variables;
    QStringList processes;
    QStringList parameters;
    QVector<RpaChoice> elements; // id and name
    QStringList columns;         // of the tables of the pages
    QStringList rows;            // variables that hold one row or item of a loop
};

// How the text of an argument is stored, shown and judged. A stored text that begins with "=" is Python; a
// literal that does carries a "'" in front of it, which is not shown.
namespace ArgumentText
{
// Whether an argument of this type may be either literal or Python.
bool MayBePython(RpaArgumentType type);

// Whether a stored text of such an argument is Python.
bool IsPython(RpaArgumentType type, const QString& text);

QString Shown(RpaArgumentType type, const QString& text);
QString Stored(RpaArgumentType type, const QString& shown, bool python);

// What is wrong with the name of a variable; empty when it may be used. All problems fit into one line of the
// narrowest panel.
QString VariableProblem(const QString& name);

// Whether texts of this type may have variables in them.
bool MayHavePieces(RpaArgumentType type);
// The texts and variables of such an argument; nothing for Python that has to be shown as a whole.
std::optional<RpaValue> Pieces(RpaArgumentType type, const QString& text);
QString Stored(RpaArgumentType type, const RpaValue& value);

// The text as Python, as it is shown behind fx.
QString Python(const RpaArgumentInfo& argument, const QString& text);
// Why the text can be shown as Python only; empty when it need not.
QString WhyPython(const RpaArgumentInfo& argument, const QString& text);

// What is wrong with a stored text, in the author's words; empty when it may be used.
QString Problem(const RpaArgumentInfo& argument, const QString& text, const FieldOffers& offers);
} // namespace ArgumentText
