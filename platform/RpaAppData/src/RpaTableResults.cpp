// SPDX-License-Identifier: Apache-2.0

// What runs write into a table, apart from what belongs to the app.
#include "TypedValue_p.h"

#include <RpaAppData/RpaTableData.h>

#include <utility>

bool RpaTableData::WriteResult(const std::function<bool()>& operation)
{
    if (hasResults)
        return operation();
    const Rows before = rows; // shared until the operation changes one of them
    if (!operation())
        return false;
    if (TypedValue::IsSame(rows, before))
        return true;
    hasResults = true;
    initialRows = before;
    emit SigResultsChanged();
    return true;
}

void RpaTableData::KeepResults()
{
    if (!std::exchange(hasResults, false))
        return;
    initialRows.clear();
    emit SigChanged();
    emit SigResultsChanged();
}

void RpaTableData::RestoreResults()
{
    if (!hasResults)
        return;
    emit SigAboutToReset();
    hasResults = false;
    rows = std::exchange(initialRows, Rows());
    emit SigReset();
    emit SigResultsChanged();
}

void RpaTableData::SetContent(const Content& content)
{
    emit SigAboutToReset();
    columns = content.columns;
    rows = content.rows;
    initialRows = content.initialRows;
    const bool hadResults = std::exchange(hasResults, content.hasResults);
    emit SigReset();
    emit SigChanged();
    if (hadResults != hasResults)
        emit SigResultsChanged();
}

void RpaTableData::ForEachRow(const std::function<void(QVector<QVariant>&)>& act)
{
    for (Rows* list : {&rows, &initialRows})
        for (QVector<QVariant>& row : *list)
            act(row);
}
