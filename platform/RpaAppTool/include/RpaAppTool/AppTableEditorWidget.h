// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/AppEditorPanel.h>

class IAppTableWidget;
class RpaTableData;
template <class Data>
class RecordTable;

// Panel in which the author edits the columns of a UI page's table: name, type and order.
class RPAAPPTOOL_EXPORT AppTableEditorWidget : public AppEditorPanel
{
    Q_OBJECT

public:
    explicit AppTableEditorWidget(QWidget* parent = nullptr);

    // Shows the data of another page and forgets the undo steps of the former one. Not owned; may go away at
    // any time.
    void Init(RpaTableData* pageData);

    // The widget of the page view that shows the same data. May be null.
    void SetAppTableWidget(IAppTableWidget* widget);

private:
    RecordTable<RpaTableData>* const model; // owned by the panel
};
