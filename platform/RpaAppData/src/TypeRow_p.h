// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

#include <algorithm>

// What a type of parameters or columns is.
template <class Type>
struct TypeRow
{
    Type type;
    const char* name; // stable, in JSON
    QString title;    // what the user reads
    // Turns a valid value into the type; false, with the value left alone, when it does not fit.
    bool (*fit)(QVariant& value);
    QVariant empty = QString(); // what counts while nothing is entered
    int traits = 0;
};

namespace TypeRows
{
// One that is not among them is the first.
template <class Type>
const TypeRow<Type>& Find(const QVector<TypeRow<Type>>& rows, Type type)
{
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [type](const TypeRow<Type>& each) { return each.type == type; });
    return row == rows.end() ? rows.first() : *row;
}

template <class Type>
QVector<Type> Types(const QVector<TypeRow<Type>>& rows)
{
    QVector<Type> types;
    for (const TypeRow<Type>& row : rows)
        types.append(row.type);
    return types;
}
} // namespace TypeRows
