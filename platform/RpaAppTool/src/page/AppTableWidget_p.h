// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_AppTableWidget.h"

#include <RpaAppTool/IAppTableWidget.h>

#include <QModelIndex>
#include <QTimer>
#include <QUndoStack>

class QTableView;
class TableExchange;
class TableFind;
class TableModel;
class WbLabel;

// The table with its tool bar.
class AppTableWidget : public IAppTableWidget
{
    Q_OBJECT

public:
    explicit AppTableWidget(QWidget* parent);

    void SetTableData(RpaTableData* data) override;
    void SetUserEditable(bool editable) override;

    QStringList GetColumnNames() const override;
    int GetRowCount() const override;
    QVariant GetCell(int row, int column) const override;
    bool SetCell(int row, int column, const QVariant& value) override;
    int AppendRow(const QVariantList& values) override;
    void ClearRows() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ConnectBar();
    void BuildView();
    void BuildHint();
    void UpdateState();
    void FollowSelection();
    QList<QModelIndex> SelectedCells() const;
    bool IsEditable() const;
    bool HasResults() const;
    void AddRow();
    void RemoveRows();
    void Copy();
    void Paste();
    bool HandleKey(QKeyEvent* event);

    QUndoStack undoStack;
    QTimer stateTimer;
    TableModel* model;
    QTableView* view;
    Ui::AppTableWidget ui;
    WbLabel* hint = nullptr;
    TableFind* find = nullptr;
    TableExchange* exchange = nullptr;
    bool userEditable = true;
};
