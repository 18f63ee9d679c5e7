// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/AppEditorPanel.h>

class IAppParamWidget;
class RpaParamData;
template <class Data>
class RecordTable;

// Panel in which the author edits the parameters of a UI page: name, label, type, default, choices and whether a value is required.
class RPAAPPTOOL_EXPORT AppParamEditorWidget : public AppEditorPanel
{
    Q_OBJECT

public:
    explicit AppParamEditorWidget(QWidget* parent = nullptr);

    // Shows the data of another page and forgets the undo steps of the former one. Not owned; may go away at
    // any time.
    void Init(RpaParamData* pageData);

    // The widget of the page view that shows the same data. May be null.
    void SetAppParamWidget(IAppParamWidget* widget);

private:
    RecordTable<RpaParamData>* const model; // owned by the panel
};
