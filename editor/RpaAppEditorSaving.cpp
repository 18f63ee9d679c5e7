// SPDX-License-Identifier: Apache-2.0

// "保存" and "另存为".
#include "RpaAppEditorMembers.h"
#include "SaveSnapshotInfoWidget.h"
#include "ui_RpaAppEditorWidget.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QPointer>

void RpaAppEditorWidget::SlotSave()
{
    ReportAction(QStringLiteral("OXA_AppDevelop_Save"));
    m->handle.SaveSnapshotAsync(m->ui->version_combo->GetCurrentData().toString(), m->appData);
}

void RpaAppEditorWidget::SlotSaveAs()
{
    ReportAction(QStringLiteral("OXA_AppDevelop_Saveas"));

    // Guarded rather than on the stack: as the editor's child it goes away with the editor while it is open.
    const QPointer<SaveSnapshotInfoWidget> dialog = new SaveSnapshotInfoWidget(this);
    dialog->SetCurrentVersionText(m->ui->version_combo->GetCurrentName());
    dialog->SetAppData(m->appData);
    const int result = dialog->exec();
    if (!dialog)
        return;
    const QString savedId = dialog->GetSavedSnapshotId();
    delete dialog;

    if (result == QDialog::Accepted) {
        m->currentSnapshotId = savedId;
        InitSnapshotCombo();
    }
}

void RpaAppEditorWidget::SlotSaveAppSnapshot(const QString& snapshotId)
{
    m->currentSnapshotId = snapshotId;
    InitSnapshotCombo();
}
