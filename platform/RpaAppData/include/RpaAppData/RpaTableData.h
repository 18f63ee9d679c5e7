// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>

class JsonReader;
class JsonWriter;

// What the cells of a column hold.
enum class RpaColumnType
{
    Text,   // QString
    Number, // double
    Date,   // QDate
    Switch, // bool
};

// One column of a table.
struct RPAAPPDATA_EXPORT RpaTableColumn
{
    QString name; // unique in the table
    RpaColumnType type = RpaColumnType::Text;
    QString foreignType; // a newer client's type, treated as Text here and written back
    int width = 0;       // pixels at 100 %; 0 for the default
    QByteArray unknown;  // members written by a newer client, kept as they came

    // Turns a value into this column's type; an invalid value and an empty text are an empty cell (invalid).
    // False, with the value left alone, when it does not fit: of another kind, or a text beyond
    // ContentLimits.
    bool Fit(QVariant& value) const;

    // Whether it is of a newer client's type: what that may hold is unknown here.
    bool IsForeign() const { return type == RpaColumnType::Text && !foreignType.isEmpty(); }

    // Of everything, the foreign members included.
    bool operator==(const RpaTableColumn& other) const;
    bool operator!=(const RpaTableColumn& other) const { return !(*this == other); }

    // Stable names ("text", "number", "date", "switch") and what the user reads.
    static QString GetTypeName(RpaColumnType type);
    static QString GetTypeTitle(RpaColumnType type);
    static QVector<RpaColumnType> GetTypes();
};
Q_DECLARE_METATYPE(RpaTableColumn)

// The table of a UI page: typed columns and rows of cells. An empty cell is an invalid QVariant. Each change
// is announced before and after it happens where an item model needs that. Indexes count from 0. GUI thread
// only.
class RPAAPPDATA_EXPORT RpaTableData : public QObject
{
    Q_OBJECT

public:
    explicit RpaTableData(QObject* parent = nullptr);

    // The columns, in order.
    int GetColumnCount() const { return columns.size(); }
    const QVector<RpaTableColumn>& GetColumns() const { return columns; }
    // An empty column outside the table.
    RpaTableColumn GetColumn(int column) const { return columns.value(column); }
    // In the order of the columns.
    QStringList GetColumnNames() const;
    // A name of the form "列2" that is free.
    QString MakeFreeColumnName(const QString& stem) const;

    // Inserts before the index (-1 or beyond the end: at the end). -1 when the name is blank or taken, else
    // the index.
    int InsertColumn(int index, const RpaTableColumn& column);
    // False outside the table, when the name is blank or taken by another, or when nothing changed. Cells
    // that do not fit a changed type become empty.
    bool SetColumn(int index, const RpaTableColumn& column);
    bool RemoveColumn(int index);
    // to is the index after the move.
    bool MoveColumn(int from, int to);

    // Of those that are shown: results of runs count, what they took the place of does not.
    int GetRowCount() const { return rows.size(); }
    // Empty outside the table.
    QVariantList GetRow(int row) const { return rows.value(row).toList(); }
    // Invalid outside the table and for an empty cell.
    QVariant GetCell(int row, int column) const;
    // False outside the table or when the value does not fit the column.
    bool SetCell(int row, int column, const QVariant& value);

    // A place in the table and what goes there.
    struct Cell
    {
        int row;
        int column;
        QVariant value;
    };
    // Any number of cells, announced once. False when some lie outside the table or do not fit; those are
    // left as they are.
    bool SetCells(const QVector<Cell>& cells);

    // Inserts before the row (-1 or beyond the end: at the end). Short rows are filled with empty cells.
    // Nothing is inserted and -1 returned when a value does not fit or a row is too long; else the index of
    // the first new row.
    int InsertRows(int row, const QVector<QVariantList>& newRows);
    int AppendRow(const QVariantList& values) { return InsertRows(-1, {values}); }
    bool RemoveRows(int row, int count);
    void ClearRows();

    // What a run does to cells and rows: as the operation does it, but no part of the JSON, which holds the
    // rows of before, until it is kept. Columns that change meanwhile change in both.
    bool WriteResult(const std::function<bool()>& operation);
    bool HasResults() const { return hasResults; }
    // Rows as the JSON holds them.
    int GetStoredRowCount() const { return hasResults ? initialRows.size() : rows.size(); }
    // Makes what runs wrote part of the app, or takes it back.
    void KeepResults();
    void RestoreResults();

    // Everything as a value, to be put back in one go.
    struct Content
    {
        QVector<RpaTableColumn> columns;
        QVector<QVector<QVariant>> rows;
        bool hasResults = false;
        QVector<QVector<QVariant>> initialRows = {};
    };
    // Costs nothing but a reference; the rows are shared until one side changes.
    Content GetContent() const { return {columns, rows, hasResults, initialRows}; }
    void SetContent(const Content& content);

    // The value in an app; see RpaAppData.
    void WriteJson(JsonWriter& writer) const;
    std::function<void()> ReadJson(JsonReader& reader);

signals:
    // What an item model tells of the same change; indexes are those after it, of a removal those before.
    void SigCellsChanged(int firstRow, int firstColumn, int lastRow, int lastColumn);
    void SigColumnChanged(int column);
    void SigAboutToInsertRows(int first, int last);
    void SigRowsInserted(int first, int last);
    void SigAboutToRemoveRows(int first, int last);
    void SigRowsRemoved(int first, int last);
    void SigAboutToInsertColumn(int column);
    void SigColumnInserted(int column);
    void SigAboutToRemoveColumn(int column);
    void SigColumnRemoved(int column);
    // Moves of columns, and everything at once.
    void SigAboutToReset();
    void SigReset();
    // After each change; not when results are taken back, which leaves the app as it was.
    void SigChanged();
    // There are results of runs, or none any more.
    void SigResultsChanged();

private:
    using Rows = QVector<QVector<QVariant>>;
    // Whether the value fits; true in changed when the cell was another one.
    bool PutCell(const Cell& cell, bool& changed);
    void ForEachRow(const std::function<void(QVector<QVariant>&)>& act);

    QVector<RpaTableColumn> columns;
    Rows rows;
    bool hasResults = false;
    Rows initialRows;   // those before the results
    QByteArray unknown; // members written by a newer client
};
