// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/AppEditorPanel.h>

class IAppToolWidget;
class RpaToolData;
template <class Data>
class RecordTable;

// Panel in which the author edits the tools of a UI page: text, icon and process of each, and their order.
class RPAAPPTOOL_EXPORT AppToolEditorWidget : public AppEditorPanel
{
    Q_OBJECT

public:
    explicit AppToolEditorWidget(QWidget* parent = nullptr);

    // Shows the data of another page and forgets the undo steps of the former one. Not owned; may go away at
    // any time.
    void Init(RpaToolData* pageData);

    // The widget of the page view that shows the same data. May be null.
    void SetAppToolWidget(IAppToolWidget* widget);

private:
    RecordTable<RpaToolData>* const model; // owned by the panel
};
