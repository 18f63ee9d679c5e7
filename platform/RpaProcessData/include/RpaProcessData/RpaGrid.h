// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaValue.h>

// A Python list, list of lists or dictionary as rows of cells. Thread-safe.
//   List, Columns   one cell in each row, for one value
//   Table           each row a list; rows may differ in length
//   Dictionary      two cells in each row: key and value
class RPAPROCESSDATA_EXPORT RpaGrid
{
public:
    using Row = QVector<RpaValue>;

    // More than this belongs into a file, and takes long to be shown in cells.
    static constexpr int mostRows = 500;
    static constexpr int mostCells = 5000;
    static constexpr int mostCharacters = 200000;

    // Nothing, and the reason in Chinese, for Python that is not written item by item. Empty text and None
    // are an empty grid.
    static std::optional<RpaGrid> Read(RpaArgumentForm form, const QString& python,
                                       QString* reason = nullptr);

    // Rows in their order; a row has as many cells as the form says.
    const QVector<Row>& GetRows() const { return rows; }
    void SetRows(const QVector<Row>& changed) { rows = changed; }

    // The Python that was read while nothing has changed. Cells that were not filled in are empty texts; rows
    // of a dictionary without a key are left out.
    QString ToPython() const;

private:
    QString WriteRow(const Row& row) const;

    RpaArgumentForm form = RpaArgumentForm::List;
    QVector<Row> rows;
    QVector<Row> readRows;
    QString source;
};
