// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

#include <memory>

class IAppTableWidget;
class RpaTableData;

// Panel in which the author edits the columns of a UI page's table: name, type and order.
// Each act of the author can be undone and marks the app modified. GUI thread only.
class RPAAPPTOOL_EXPORT AppTableEditorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AppTableEditorWidget(QWidget* parent = nullptr);
    ~AppTableEditorWidget() override;

    // The app that edits belong to.
    void SetAppDataPtr(const RpaAppDataPtr& appData);

    // Shows the data of another page and forgets the undo steps of the former one. Not owned; may go away at
    // any time.
    void Init(RpaTableData* pageData);

    // The widget of the page view that shows the same data. May be null.
    void SetAppTableWidget(IAppTableWidget* widget);

    // Whether the panel is folded to its title.
    bool IsShrink() const;

signals:
    // The author folded or unfolded the panel.
    void SigShrinkChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
