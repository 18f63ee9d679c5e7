// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RpaAppEditorNaviWidget.h"

#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QMap>

class WbIconButtonWidget;

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

    Ui::RpaAppEditorNaviWidget ui;
    QMap<WbIconButtonWidget*, int> indexByButton;
};
