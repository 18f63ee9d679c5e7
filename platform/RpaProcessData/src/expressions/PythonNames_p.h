// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSet>
#include <QString>
#include <QVector>

// The names in a Python expression, as far as can be told without a parser.
namespace PythonNames
{
struct Place
{
    QString name;
    int begin;
};

// Where names are read, in their order: no attributes, keywords, built-in functions, named arguments, names
// bound by the expression's own comprehensions and lambdas, nor names inside string literals (but those
// inside the fields of f-strings).
QVector<Place> ReadIn(const QString& python);

// All names, those that the expression itself binds and attributes included.
QSet<QString> AllIn(const QString& python);

bool IsKeyword(const QString& name);
bool IsBuiltIn(const QString& name);
} // namespace PythonNames
