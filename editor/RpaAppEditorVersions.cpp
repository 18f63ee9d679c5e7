// SPDX-License-Identifier: Apache-2.0

// The list of versions: loading it, switching to another version, deleting one.
#include "RpaAppEditorMembers.h"
#include "SnapshotWriting.h"
#include "ui_RpaAppEditorWidget.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/PackagedMsgBox.h>

#include <QPointer>

using SnapshotWriting::SnapshotManager;

namespace
{
QString DisplayName(const RpaAppSnapshot& snapshot)
{
    switch (snapshot.GetState()) {
    case AppSnapshotGray:
        return QStringLiteral("【灰度】") + snapshot.GetName();
    case AppSnapshotOnline:
        return QStringLiteral("【线上】") + snapshot.GetName();
    default:
        return snapshot.GetName();
    }
}
} // namespace

AppSnapshotState RpaAppEditorWidget::GetSnapshotState(const QString& snapshotId) const
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(snapshotId);
    return snapshot ? snapshot->GetState() : AppSnapshotDevelop;
}

void RpaAppEditorWidget::InitSnapshotCombo()
{
    RpaVersionCombo* const combo = m->ui->version_combo;
    combo->Clear();
    if (SnapshotManager()->GetDevelopCount() == 0)
        combo->AddRow(QStringLiteral("版本1"), QStringLiteral("默认开发版本"), QString(), AppSnapshotDevelop);
    for (int i = 0; i < SnapshotManager()->GetCount(); ++i) {
        const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(i);
        combo->AddRow(DisplayName(*snapshot), snapshot->GetDesc(), snapshot->GetId(), snapshot->GetState());
    }

    if (!m->currentSnapshotId.isEmpty()) {
        UpdateSnapshotCombo();
    } else if (combo->GetRowCount() >= 1) {
        combo->SetCurrentIndex(0);
        m->currentSnapshotId = combo->GetDataAt(0).toString();
    }
}

// Also puts the selection back after a switch that was refused.
void RpaAppEditorWidget::UpdateSnapshotCombo()
{
    RpaVersionCombo* const combo = m->ui->version_combo;
    if (!m->currentSnapshotId.isEmpty())
        combo->SetCurrentIndex(combo->GetIndexOfData(m->currentSnapshotId));
}

void RpaAppEditorWidget::RequestSnapList(const QString& appId)
{
    m->ui->requestStatusWidget->SetStatus(RequestStatus::Loading);
    m->handle.GetSnapshotList(appId);
}

void RpaAppEditorWidget::SlotGetSnapshotListFinished(bool bSuccess, const QString& errorDesc)
{
    if (!bSuccess) {
        m->ui->requestStatusWidget->SetStatus(RequestStatus::Failed);
        m->ui->requestStatusWidget->SetErrorMsg(errorDesc);
        return;
    }
    m->ui->requestStatusWidget->SetStatus(RequestStatus::Succeeded);
    if (SnapshotManager()->GetDevelopCount() < 1) {
        ShowTemplatePage();
        return;
    }
    const bool isOpen = !m->currentSnapshotId.isEmpty();
    m->handle.GetSnapshotData(isOpen ? m->currentSnapshotId : SnapshotManager()->GetSnapshotId(0));
}

void RpaAppEditorWidget::SlotGetSnapshotData(bool bSuccess, const QString& snapshotId,
                                             const RpaAppDataPtr& appDataPtr)
{
    if (!bSuccess) {
        RequestSnapList(m->executeInfo.GetAppId());
        return;
    }
    m->currentSnapshotId = snapshotId;
    SetAppData(appDataPtr);
    ResetPackageInfo();
}

void RpaAppEditorWidget::SlotSnapshotChanged(const QVariant& versionId)
{
    const QPointer<RpaAppEditorWidget> self(this);
    if (NeedSave() && !SaveBeforeSwitch()) {
        if (self)
            UpdateSnapshotCombo();
        return;
    }

    const QString snapshotId = versionId.toString();
    if (snapshotId.isEmpty())
        ResetToDefault();
    else
        m->handle.GetSnapshotData(snapshotId);
}

// True when the switch goes on: the user saved, or gave the changes up.
bool RpaAppEditorWidget::SaveBeforeSwitch()
{
    // The host may take the editor away while the question or the save is under way.
    const QPointer<RpaAppEditorWidget> self(this);
    const int answer = PackagedMsgBox::question(QStringLiteral("版本数据已修改，是否先保存当前版本？"), this,
                                                QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (!self || answer == QMessageBox::Cancel)
        return false;
    if (answer != QMessageBox::Yes)
        return true;

    m->ui->version_combo->setEnabled(false);
    const bool saved = m->handle.SaveSnapshotSync(m->currentSnapshotId, m->appData);
    if (!self)
        return false;
    m->ui->version_combo->setEnabled(true);
    return saved;
}

void RpaAppEditorWidget::SlotSnapshotDelete(const QVariant& versionId)
{
    ReportAction(QStringLiteral("OXA_AppDevelop_VersionDelete"));
    if (SnapshotManager()->GetDevelopCount() == 1) {
        PackagedMsgBox::warn(QStringLiteral("至少需保留一个开发中版本"), this, QMessageBox::Ok);
        return;
    }
    const QString snapshotId = versionId.toString();
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(snapshotId);
    if (!snapshot)
        return;

    const QPointer<RpaAppEditorWidget> self(this);
    const QString question = QStringLiteral("确定要删除名称为%1的版本吗？").arg(snapshot->GetName());
    const int answer = PackagedMsgBox::question(question, this, QMessageBox::Yes | QMessageBox::No);
    if (self && m->appData && answer == QMessageBox::Yes)
        m->handle.DeleteSnapshot(m->appData->GetAppExtendInfo()->GetAppId(), snapshotId);
}

void RpaAppEditorWidget::SlotSnapshotDeleted(const QString& snapshotId)
{
    if (snapshotId == m->currentSnapshotId) {
        if (SnapshotManager()->GetCount() == 0) {
            ResetToDefault();
        } else if (const RpaAppSnapshotPtr first = SnapshotManager()->GetSnapshot(0)) {
            m->currentSnapshotId = first->GetId();
            m->handle.GetSnapshotData(m->currentSnapshotId);
        }
    }
    InitSnapshotCombo();
}
