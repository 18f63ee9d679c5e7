// SPDX-License-Identifier: Apache-2.0

#include "TableCommands_p.h"
#include "TableModel_p.h"

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbLineLimit.h>
#include <WbFoundation/ContentLimits.h>

#include <QDate>
#include <QLocale>
#include <QUndoStack>

namespace
{
// A name stands over its cells as they do.
int AlignmentOf(RpaColumnType type)
{
    return int((type == RpaColumnType::Number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

QString RefusalOf(const QString& text, RpaColumnType type)
{
    constexpr int longestQuote = 40;
    if (!ContentLimits::Fits(text))
        return QStringLiteral("单元格的文字超过 16 MB，没有修改");
    return QStringLiteral("“%1”不是有效的%2")
        .arg(text.left(longestQuote), RpaTableColumn::GetTypeTitle(type));
}
} // namespace

QString TableMisfits::GetText() const
{
    QStringList texts;
    if (ofAnotherType > 0)
        texts << QStringLiteral("%1 个单元格与列的类型不符").arg(ofAnotherType);
    if (tooLong > 0)
        texts << QStringLiteral("%1 个单元格的文字超过 16 MB").arg(tooLong);
    if (beyond > 0)
        texts << QStringLiteral("%1 个单元格在最后一列之外").arg(beyond);
    return texts.join(QStringLiteral("，"));
}

void TableModel::SetData(RpaTableData* given)
{
    if (tableData)
        tableData->disconnect(this);
    beginResetModel();
    tableData = given;
    undoStack.clear();
    if (tableData)
        Follow();
    endResetModel();
}

void TableModel::Follow()
{
    RpaTableData* data = tableData;
    connect(data, &RpaTableData::SigCellsChanged, this, [this](int top, int left, int bottom, int right) {
        emit dataChanged(index(top, left), index(bottom, right));
    });
    connect(data, &RpaTableData::SigColumnChanged, this, [this](int column) {
        emit headerDataChanged(Qt::Horizontal, column, column);
        if (rowCount() > 0)
            emit dataChanged(index(0, column), index(rowCount() - 1, column));
    });
    connect(data, &RpaTableData::SigAboutToInsertRows, this,
            [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(data, &RpaTableData::SigRowsInserted, this, [this] { endInsertRows(); });
    connect(data, &RpaTableData::SigAboutToRemoveRows, this,
            [this](int first, int last) { beginRemoveRows({}, first, last); });
    connect(data, &RpaTableData::SigRowsRemoved, this, [this] { endRemoveRows(); });
    connect(data, &RpaTableData::SigAboutToInsertColumn, this,
            [this](int column) { beginInsertColumns({}, column, column); });
    connect(data, &RpaTableData::SigColumnInserted, this, [this] { endInsertColumns(); });
    connect(data, &RpaTableData::SigAboutToRemoveColumn, this,
            [this](int column) { beginRemoveColumns({}, column, column); });
    connect(data, &RpaTableData::SigColumnRemoved, this, [this] { endRemoveColumns(); });
    connect(data, &RpaTableData::SigAboutToReset, this, [this] { beginResetModel(); });
    connect(data, &RpaTableData::SigReset, this, [this] { endResetModel(); });
    connect(data, &QObject::destroyed, this, [this] {
        beginResetModel();
        tableData = nullptr;
        endResetModel();
    });
}

int TableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !tableData ? 0 : tableData->GetRowCount();
}

int TableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || !tableData ? 0 : tableData->GetColumnCount();
}

QString TableModel::TextOf(const QVariant& value)
{
    if (value.userType() == QMetaType::QDate)
        return value.toDate().toString(Qt::ISODate);
    if (value.userType() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("是") : QStringLiteral("否");
    if (value.userType() == QMetaType::Double)
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    return value.toString();
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    if (!tableData || !index.isValid())
        return {};
    const QVariant value = tableData->GetCell(index.row(), index.column());
    const RpaColumnType type = tableData->GetColumns().at(index.column()).type;
    switch (role) {
    case Qt::DisplayRole:
        return type == RpaColumnType::Switch ? QVariant() : QVariant(TextOf(value));
    case Qt::EditRole:
        return type == RpaColumnType::Date ? value : QVariant(TextOf(value));
    case Qt::CheckStateRole:
        if (type != RpaColumnType::Switch)
            return {};
        return value.toBool() ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return AlignmentOf(type);
    default:
        return {};
    }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!tableData)
        return {};
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? section + 1 : QVariant();
    if (role == Qt::TextAlignmentRole)
        return AlignmentOf(tableData->GetColumn(section).type);
    const QString name = tableData->GetColumn(section).name;
    if (role == Qt::DisplayRole)
        return name;
    return role == Qt::ToolTipRole ? UIUtils::PlainToolTip(name) : QVariant();
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!tableData || !index.isValid() || !userEditable)
        return flags;
    const bool isSwitch = tableData->GetColumns().at(index.column()).type == RpaColumnType::Switch;
    // It can be cleared, and another one pasted over it.
    const QVariant cell = tableData->GetCell(index.row(), index.column());
    if (cell.userType() == QMetaType::QString && cell.toString().size() > WbLineLimit::mostCharacters)
        return flags;
    return flags | (isSwitch ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!tableData || !index.isValid() || (role != Qt::EditRole && role != Qt::CheckStateRole))
        return false;
    const RpaTableColumn column = tableData->GetColumn(index.column());
    QVariant after = role == Qt::CheckStateRole ? QVariant(value.toInt() == Qt::Checked) : value;
    if (!column.Fit(after)) {
        emit SigRefused(RefusalOf(value.toString(), column.type));
        return false;
    }
    const QVariant before = tableData->GetCell(index.row(), index.column());
    if (before.userType() == after.userType() && TextOf(before) == TextOf(after))
        return true;
    undoStack.push(new CellsCommand(QStringLiteral("修改单元格"), tableData,
                                    {{index.row(), index.column(), before, after}}, 0));
    return true;
}

QString TableModel::GetText(int row, int column) const
{
    return tableData ? TextOf(tableData->GetCell(row, column)) : QString();
}

TableMisfits TableModel::PasteTexts(const QVector<int>& rows, int column, const QVector<QStringList>& texts,
                                    const QString& actName)
{
    if (!tableData || texts.isEmpty())
        return {};
    const QVector<RpaTableColumn> columns = tableData->GetColumns();
    QVector<CellChange> changes;
    TableMisfits misfits;
    for (int i = 0; i < texts.size(); ++i) {
        const QStringList& cells = texts.at(i);
        const int row = i < rows.size() ? rows.at(i) : tableData->GetRowCount() + i - rows.size();
        for (int j = 0; j < cells.size(); ++j) {
            QVariant after = cells.at(j);
            if (column + j >= columns.size())
                misfits.beyond += cells.at(j).isEmpty() ? 0 : 1;
            else if (columns.at(column + j).Fit(after))
                changes.append({row, column + j, tableData->GetCell(row, column + j), after});
            else
                ++(ContentLimits::Fits(cells.at(j)) ? misfits.ofAnotherType : misfits.tooLong);
        }
    }
    undoStack.push(new CellsCommand(actName, tableData, changes, qMax(0, texts.size() - rows.size())));
    return misfits;
}

void TableModel::AppendRows(const QVector<QVariantList>& added, const QString& actName)
{
    if (!tableData || added.isEmpty())
        return;
    QVector<RowsCommand::Row> rows;
    rows.reserve(added.size());
    for (const QVariantList& cells : added)
        rows.append({tableData->GetRowCount() + rows.size(), cells});
    undoStack.push(new RowsCommand(actName, tableData, rows, true));
}

void TableModel::InsertRow(int row)
{
    if (tableData)
        undoStack.push(new RowsCommand(QStringLiteral("添加行"), tableData, {{row, {}}}, true));
}

void TableModel::RemoveRows(const QVector<int>& rows)
{
    if (!tableData || rows.isEmpty())
        return;
    QVector<RowsCommand::Row> removed;
    for (const int row : rows)
        removed.append({row, tableData->GetRow(row)});
    undoStack.push(new RowsCommand(QStringLiteral("删除行"), tableData, removed, false));
}

void TableModel::ClearCells(const QModelIndexList& cells)
{
    if (!tableData || cells.isEmpty())
        return;
    QVector<CellChange> changes;
    for (const QModelIndex& cell : cells)
        changes.append(
            {cell.row(), cell.column(), tableData->GetCell(cell.row(), cell.column()), QVariant()});
    undoStack.push(new CellsCommand(QStringLiteral("清空单元格"), tableData, changes, 0));
}
