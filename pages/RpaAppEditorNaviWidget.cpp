// SPDX-License-Identifier: Apache-2.0

#include "RpaAppEditorNaviWidget.h"

#include "RpaAppNotify.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIconButtonWidget.h>

#include <QLabel>

namespace
{

constexpr int naviSideMargin = 28;
constexpr int buttonSpacing = 28;

enum PageIndex
{
    UIDesignPage = 0,
    ProcessPage = 1,
    ExtendPage = 2,
};

void Select(WbIconButtonWidget* button, bool selected)
{
    button->bSelected = selected;
    button->UpdateStyle();
}

} // namespace

RpaAppEditorNaviWidget::RpaAppEditorNaviWidget(QWidget* parent) : WbBaseWidget(parent)
{
    ui.setupUi(this);
    InitButtons();
    AdjustForDpi();
    DpiTool::Register(this);
    for (auto it = indexByButton.cbegin(); it != indexByButton.cend(); ++it)
        connect(it.key(), &WbIconButtonWidget::SigClicked, this, &RpaAppEditorNaviWidget::OnButtonClicked);
}

RpaAppEditorNaviWidget::~RpaAppEditorNaviWidget()
{
    DpiTool::Unregister(this);
}

void RpaAppEditorNaviWidget::InitButtons()
{
    indexByButton = {
        {ui.pushButtonUI, UIDesignPage},
        {ui.pushButtonProcess, ProcessPage},
        {ui.pushButtonExtend, ExtendPage},
    };
    for (auto it = indexByButton.cbegin(); it != indexByButton.cend(); ++it)
        it.key()->setFocusPolicy(Qt::NoFocus);
    ui.pushButtonUI->GetLabelText()->setText(QStringLiteral("界面设计"));
    ui.pushButtonProcess->GetLabelText()->setText(QStringLiteral("流程设计"));
    ui.pushButtonExtend->GetLabelText()->setText(QStringLiteral("使用说明设计"));
    Select(ui.pushButtonUI, true);
}

void RpaAppEditorNaviWidget::AdjustForDpi()
{
    const int side = DpiTool::ScaleDefault(naviSideMargin);
    ui.horizontalLayout->setContentsMargins(side, 0, side, 0);
    ui.horizontalLayout->setSpacing(DpiTool::ScaleDefault(buttonSpacing));
}

void RpaAppEditorNaviWidget::PickProcessPage()
{
    emit ui.pushButtonProcess->SigClicked();
}

void RpaAppEditorNaviWidget::OnButtonClicked()
{
    auto* clicked = qobject_cast<WbIconButtonWidget*>(sender());
    if (!clicked)
        return;
    for (auto it = indexByButton.cbegin(); it != indexByButton.cend(); ++it)
        if (it.key() != clicked)
            Select(it.key(), false);
    Select(clicked, true);
    // A repeated click is announced again: the page may have been left by other means meanwhile.
    emit RpaAppNotify::Instance()->SigEditorTabChanged(indexByButton.value(clicked, UIDesignPage));
}
