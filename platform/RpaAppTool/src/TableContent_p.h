#pragma once

#include <RpaAppData/RpaTableData.h>

#include <QVector>

// Columns and rows of a table as a value; rows are shared with the table until one of them changes.
struct TableContent
{
    QVector<RpaTableColumn> columns;
    QVector<QVariantList> rows;

    static TableContent Of(const RpaTableData& data)
    {
        TableContent content;
        content.columns = data.GetColumns();
        content.rows.reserve(data.GetRowCount());
        for (int row = 0; row < data.GetRowCount(); ++row)
            content.rows << data.GetRow(row);
        return content;
    }

    void WriteTo(RpaTableData& data) const
    {
        data.ClearRows();
        while (data.GetColumnCount() > 0)
            data.RemoveColumn(data.GetColumnCount() - 1);
        for (const RpaTableColumn& column : columns)
            data.InsertColumn(-1, column);
        data.InsertRows(-1, rows);
    }
};
