// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentText_p.h"
#include "FormEditor_p.h"

#include <RpaProcessData/RpaGrid.h>

class QTableWidget;
class ValuePicker;

// A list, a dictionary or rows of a table as a small grid. Keys: Ctrl+Enter adds a row, Ctrl+Delete removes
// one, Alt+Up and Alt+Down move it, Del empties a cell, Ctrl+Space inserts, Ctrl+V takes cells of a
// spreadsheet.
class GridEdit : public FormEditor
{
    Q_OBJECT

public:
    GridEdit(const RpaArgumentInfo& argument, const FieldOffers& fieldOffers, QWidget* parent = nullptr);

    void Show(const QString& python) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildTable();
    QWidget* BuildButtons();
    void AddButton(QWidget* bar, const char* name, const QString& icon, const QString& tip,
                   void (GridEdit::*act)());
    void Fill();
    void FillCell(int row, int column, const RpaValue& value);
    RpaValue CellValue(int row, int column) const;
    void FitHeight();
    void Tell();
    void TellWhole(int row, int column);
    void AddRow();
    void RemoveRow();
    void RaiseRow() { MoveRow(-1); }
    void LowerRow() { MoveRow(1); }
    void MoveRow(int direction);
    void AddColumn();
    void RemoveColumn();
    void ClearCells();
    void Paste();
    void Pick(const RpaValuePart& part);

    const RpaArgumentForm form;
    const FieldOffers offers;
    RpaGrid grid;
    QTableWidget* table;
    ValuePicker* picker;
};
