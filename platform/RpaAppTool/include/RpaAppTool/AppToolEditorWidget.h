// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

#include <memory>

class IAppToolWidget;
class RpaToolData;

// Panel in which the author edits the tools of a UI page: text, icon and process of each, and their order.
// Each act of the author can be undone and marks the app modified. GUI thread only.
class RPAAPPTOOL_EXPORT AppToolEditorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AppToolEditorWidget(QWidget* parent = nullptr);
    ~AppToolEditorWidget() override;

    // The app that edits belong to.
    void SetAppDataPtr(const RpaAppDataPtr& appData);

    // Shows the data of another page and forgets the undo steps of the former one. Not owned; may go away at
    // any time.
    void Init(RpaToolData* pageData);

    // The widget of the page view that shows the same data. May be null.
    void SetAppToolWidget(IAppToolWidget* widget);

    // Whether the panel is folded to its title.
    bool IsShrink() const;

signals:
    // The author folded or unfolded the panel.
    void SigShrinkChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
