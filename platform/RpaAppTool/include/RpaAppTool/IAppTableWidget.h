// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/RpaAppToolExport.h>
#include <RpaEngineCore/IAppTableEngine.h>

#include <QWidget>

class RpaTableData;

// The table of a UI page: typed columns; cells are edited in place, found and filtered, ranges copied and
// pasted, rows read from and written to Excel and CSV files, and each act can be undone. A running process
// reads and writes it through IAppTableEngine. GUI thread only.
class RPAAPPTOOL_EXPORT IAppTableWidget : public QWidget, public IAppTableEngine
{
    Q_OBJECT

public:
    // Owned by the parent.
    static IAppTableWidget* CreateTableWidget(QWidget* parent);

    ~IAppTableWidget() override;

    // Shows this table and follows its changes; null shows none. Undo steps of the former one are forgotten.
    // Not owned; may go away at any time.
    virtual void SetTableData(RpaTableData* data) = 0;

    // Whether the user may change cells and rows; a running process may always.
    virtual void SetUserEditable(bool editable) = 0;

protected:
    explicit IAppTableWidget(QWidget* parent);
};
