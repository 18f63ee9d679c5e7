// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaTableData.h>

#include <QAbstractTableModel>
#include <QPointer>

class QUndoStack;

// How many texts were not taken over, and why.
struct TableMisfits
{
    int ofAnotherType = 0;
    int tooLong = 0;
    int beyond = 0; // the last column

    bool Any() const { return ofAnotherType + tooLong + beyond > 0; }
    // In the user's words.
    QString GetText() const;
};

// The table of a page for its view. What the user changes goes through the undo stack; what a run changes
// does not.
class TableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    TableModel(QUndoStack& stack, QObject* parent) : QAbstractTableModel(parent), undoStack(stack) {}

    void SetData(RpaTableData* tableData);
    RpaTableData* GetData() const { return tableData; }
    void SetUserEditable(bool editable) { userEditable = editable; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Cell as the user reads and copies it.
    static QString TextOf(const QVariant& value);
    QString GetText(int row, int column) const;

    // Writes texts as one act into these rows, beginning at a column; rows that are lacking are added at the
    // end, columns beyond the last left out. Returns how many cells did not fit and were left as they were.
    TableMisfits PasteTexts(const QVector<int>& rows, int column, const QVector<QStringList>& texts,
                            const QString& actName);

    // Adds rows that fit at the end, as one act.
    void AppendRows(const QVector<QVariantList>& rows, const QString& actName);

    void InsertRow(int row);
    void RemoveRows(const QVector<int>& rows);
    void ClearCells(const QModelIndexList& cells);

signals:
    void SigRefused(const QString& reason);

private:
    void Follow();

    QUndoStack& undoStack;
    QPointer<RpaTableData> tableData;
    bool userEditable = true;
};
