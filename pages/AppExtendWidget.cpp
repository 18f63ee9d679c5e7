// SPDX-License-Identifier: Apache-2.0

#include "AppExtendWidget.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <WbWebKernal/WbRichEditor.h>

AppExtendWidget::AppExtendWidget(QWidget* parent) : WbBaseWidget(parent)
{
    ui.setupUi(this);
}

void AppExtendWidget::SetRpaAppData(const RpaAppDataPtr& app)
{
    appData = app;
    loadedManual = app->GetAppExtendInfo()->GetManual();
    // What the editor makes of the text while it loads is not an edit.
    disconnect(ui.textEditManual, &WbRichEditor::SigTextChanged, this, &AppExtendWidget::SlotManualEdited);
    ui.textEditManual->Init(loadedManual);
    connect(ui.textEditManual, &WbRichEditor::SigTextChanged, this, &AppExtendWidget::SlotManualEdited);
}

void AppExtendWidget::SlotManualEdited(QString str)
{
    if (str == loadedManual)
        return;
    appData->GetAppExtendInfo()->manual = str;
    appData->SetModified(true);
}
