// SPDX-License-Identifier: Apache-2.0

#include "PythonParts_p.h"

#include <RpaProcessData/RpaGrid.h>

#include <QStringList>

#include <algorithm>

namespace
{
using Items = QVector<PythonParts>;

// The items between commas; a comma may stand behind the last one.
Items ItemsOf(const PythonParts& inside)
{
    Items items = inside.SplitAt(",");
    if (items.last().IsEmpty())
        items.removeLast();
    return items;
}

bool IsPlainItem(const PythonParts& item)
{
    return !item.IsEmpty() && !item.Has("for") && !item.At(0).IsSign("*") && !item.At(0).IsSign("**") &&
           !item.Has(":") && !item.Has(":=") && !item.Has("=");
}

RpaGrid::Row ValuesOf(const Items& items)
{
    RpaGrid::Row row;
    for (const PythonParts& item : items)
        row.append(RpaValue::Read(item.Text()));
    return row;
}

bool ReadList(const PythonParts& python, QVector<RpaGrid::Row>& rows)
{
    const bool isList = python.IsWithin("[", "]");
    if (!isList && !python.Has(","))
        return false;
    const Items items = ItemsOf(isList ? python.Inside() : python);
    for (const PythonParts& item : items)
        rows.append({RpaValue::Read(item.Text())});
    return std::all_of(items.begin(), items.end(), IsPlainItem);
}

bool ReadTable(const PythonParts& python, QVector<RpaGrid::Row>& rows)
{
    if (!python.IsWithin("[", "]"))
        return false;
    const Items lines = ItemsOf(python.Inside());
    for (const PythonParts& line : lines) {
        if (!line.IsWithin("[", "]"))
            return false;
        const Items cells = ItemsOf(line.Inside());
        if (!std::all_of(cells.begin(), cells.end(), IsPlainItem))
            return false;
        rows.append(ValuesOf(cells));
    }
    return true;
}

bool ReadDictionary(const PythonParts& python, QVector<RpaGrid::Row>& rows)
{
    if (!python.IsWithin("{", "}"))
        return false;
    const Items entries = ItemsOf(python.Inside());
    for (const PythonParts& entry : entries) {
        const Items pair = entry.SplitAt(":");
        if (pair.size() != 2 || !IsPlainItem(pair.first()) || !IsPlainItem(pair.last()))
            return false;
        rows.append(ValuesOf(pair));
    }
    return true;
}

bool ReadForm(RpaArgumentForm form, const PythonParts& python, QVector<RpaGrid::Row>& rows)
{
    if (python.IsEmpty() || (python.Count() == 1 && python.At(0).IsName("None")))
        return true;
    switch (form) {
    case RpaArgumentForm::Table:
        return ReadTable(python, rows);
    case RpaArgumentForm::Dictionary:
        return ReadDictionary(python, rows);
    default:
        return ReadList(python, rows);
    }
}

bool IsTooLarge(const QVector<RpaGrid::Row>& rows)
{
    int cells = 0;
    for (const RpaGrid::Row& row : rows)
        cells += row.size();
    return rows.size() > RpaGrid::mostRows || cells > RpaGrid::mostCells;
}

QString CellPython(const RpaValue& value)
{
    return value.IsEmpty() ? QStringLiteral("\"\"") : value.ToPython();
}
} // namespace

std::optional<RpaGrid> RpaGrid::Read(RpaArgumentForm form, const QString& python, QString* reason)
{
    const auto fail = [reason](const QString& why) {
        if (reason)
            *reason = why;
        return std::nullopt;
    };
    if (python.size() > mostCharacters)
        return fail(QStringLiteral("内容太多"));
    const QString trimmed = python.trimmed();
    const PythonParts parts(trimmed.startsWith(QLatin1Char('=')) ? trimmed.mid(1) : trimmed);
    RpaGrid grid;
    if (parts.IsBroken())
        return fail(QStringLiteral("括号或引号没有成对"));
    if (!ReadForm(form, parts, grid.rows))
        return fail(QStringLiteral("不是逐项写出的内容，而是变量或算式"));
    if (IsTooLarge(grid.rows))
        return fail(QStringLiteral("内容太多"));
    grid.form = form;
    grid.source = python;
    grid.readRows = grid.rows;
    return grid;
}

QString RpaGrid::WriteRow(const Row& row) const
{
    if (form == RpaArgumentForm::Dictionary)
        return CellPython(row.value(0)) + QStringLiteral(": ") + CellPython(row.value(1));
    QStringList cells;
    for (const RpaValue& value : row)
        cells.append(CellPython(value));
    const QString joined = cells.join(QLatin1String(", "));
    return form == RpaArgumentForm::Table ? QLatin1Char('[') + joined + QLatin1Char(']') : joined;
}

QString RpaGrid::ToPython() const
{
    if (rows == readRows)
        return source;
    QStringList written;
    for (const Row& row : rows)
        if (form != RpaArgumentForm::Dictionary || !row.value(0).IsEmpty())
            written.append(WriteRow(row));
    const QString joined = written.join(QLatin1String(", "));
    return form == RpaArgumentForm::Dictionary ? QLatin1Char('{') + joined + QLatin1Char('}')
                                               : QLatin1Char('[') + joined + QLatin1Char(']');
}
