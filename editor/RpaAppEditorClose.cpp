// SPDX-License-Identifier: Apache-2.0

// The guard in front of closing, and the fresh start.
#include "RpaAppEditorMembers.h"
#include "ui_RpaAppEditorWidget.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/PackagedMsgBox.h>

#include <QPointer>

BeforeCloseResult RpaAppEditorWidget::BeforeClose()
{
    if (!NeedSave())
        return BeforeCloseResult::NothingPending;
    return SaveOrNot() ? BeforeCloseResult::Resolved : BeforeCloseResult::Refused;
}

// Edits of a released version cannot be saved into it, so they are nothing to ask about.
bool RpaAppEditorWidget::NeedSave() const
{
    if (!m->appData || !m->appData->GetModified())
        return false;
    return m->currentSnapshotId.isEmpty() || GetSnapshotState(m->currentSnapshotId) == AppSnapshotDevelop;
}

bool RpaAppEditorWidget::SaveOrNot()
{
    if (!NeedSave())
        return true;

    // The host may take the editor away while the question or the save is under way.
    const QPointer<RpaAppEditorWidget> self(this);
    const int answer = PackagedMsgBox::question(QStringLiteral("应用已经修改，是否保存？"), this,
                                                QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (!self)
        return false;
    switch (answer) {
    case QMessageBox::Yes:
        return m->handle.SaveSnapshotSync(m->ui->version_combo->GetCurrentData().toString(), m->appData);
    case QMessageBox::No:
        m->appData->SetModified(false);
        return true;
    default:
        return false;
    }
}

void RpaAppEditorWidget::ResetToDefault()
{
    m->currentSnapshotId.clear();
    const auto appData = RpaAppDataPtr::create();
    appData->InitDefault();
    SetAppData(appData);
}
