// SPDX-License-Identifier: Apache-2.0

#include "PanelFrame_p.h"

#include <RpaAppData/RpaPageEdits.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

#include <QVBoxLayout>

PanelFrame::PanelFrame(QWidget* owner, const QString& title, const QString& recordName,
                       const QString& emptyHint)
    : panel(new RecordPanel(title, recordName, emptyHint))
{
    auto* layout = new QVBoxLayout(owner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(panel);
    // A folded panel gives its room to the others.
    connect(panel, &RecordPanel::SigShrinkChanged, owner,
            [owner, this] { owner->setSizePolicy(panel->sizePolicy()); });
}

void PanelFrame::SetAppData(const RpaAppDataPtr& app)
{
    appData = app;
    if (appData)
        RpaPageEdits::Of(appData.data()); // knows the pages before they are changed
}

void PanelFrame::SetShown(QWidget* widget)
{
    shown = widget;
    UpdateShown();
}

void PanelFrame::UpdateShown()
{
    if (shown)
        shown->setVisible(panel->GetRecordCount() > 0);
}

void PanelFrame::TakeChange()
{
    UpdateShown();
    // What a run writes into its page is its result, not an edit of the app.
    if (appData && !RpaProcessRelatedUIControler::Instance()->IsRunning())
        RpaPageEdits::Of(appData.data())->Edited();
}
