// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QMap>

#include <memory>

class WbIconButtonWidget;

namespace Ui
{
class RpaAppEditorNaviWidget;
}

// The row of buttons that chooses the page of the editor. It announces the picked page through RpaAppNotify
// and switches nothing itself; exactly one button is selected at any time.
class RpaAppEditorNaviWidget : public WbBaseWidget, public IDpiAdapter
{
    Q_OBJECT

public:
    explicit RpaAppEditorNaviWidget(QWidget* parent = nullptr);
    ~RpaAppEditorNaviWidget() override;

    void AdjustForDpi() override;

    // Picks the page of the processes, as a press of its button does.
    void PickProcessPage();

private:
    void InitButtons();
    void OnButtonClicked();

    const std::unique_ptr<Ui::RpaAppEditorNaviWidget> ui;
    QMap<WbIconButtonWidget*, int> indexByButton;
};
