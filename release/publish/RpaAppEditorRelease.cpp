// SPDX-License-Identifier: Apache-2.0

// Gray release and publishing. Gray release refuses gray and online versions, publishing only online ones.
#include "RpaAppEditorMembers.h"
#include "ui_RpaAppEditorWidget.h"

#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/PackagedMsgBox.h>

#include <QPointer>

namespace
{
constexpr int grayRelease = 1;
constexpr int publishOnline = 2;
} // namespace

void RpaAppEditorWidget::SlotBeta()
{
    ReportAction(QStringLiteral("OXA_AppDevelop_GrayRelease"));

    switch (GetSnapshotState(m->ui->version_combo->GetCurrentData().toString())) {
    case AppSnapshotGray:
        PackagedMsgBox::information(QStringLiteral("灰度版本不能再次灰度。"), this, QMessageBox::Ok);
        return;
    case AppSnapshotOnline:
        PackagedMsgBox::information(QStringLiteral("线上版本不能灰度。"), this, QMessageBox::Ok);
        return;
    case AppSnapshotDevelop:
        break;
    }
    if (!RefuseUnsaved())
        AskAndRelease(QStringLiteral("确定开始灰度吗？"), grayRelease);
}

void RpaAppEditorWidget::SlotPublish()
{
    ReportAction(QStringLiteral("OXA_AppDevelop_Launch"));

    const AppSnapshotState state = GetSnapshotState(m->ui->version_combo->GetCurrentData().toString());
    if (state == AppSnapshotOnline) {
        PackagedMsgBox::information(QStringLiteral("线上版本不能再次上线。"), this, QMessageBox::Ok);
        return;
    }
    if (RefuseUnsaved())
        return;

    const bool changesAreIgnored = state == AppSnapshotGray && m->appData && m->appData->GetModified();
    AskAndRelease(
        changesAreIgnored
            ? QStringLiteral("仅支持上线原灰度版本内容，针对当前灰度版本修改将忽略，确定发布上线吗？")
            : QStringLiteral("确定发布上线吗"),
        publishOnline);
}

// True when there is nothing on the server yet that the author would recognise as what he sees.
bool RpaAppEditorWidget::RefuseUnsaved()
{
    if (!m->ui->version_combo->GetCurrentData().toString().isEmpty() && !NeedSave())
        return false;
    PackagedMsgBox::warn(QStringLiteral("当前版本未保存，请保存后再操作。"), this, QMessageBox::Ok);
    return true;
}

void RpaAppEditorWidget::AskAndRelease(const QString& question, int publishType)
{
    const QPointer<RpaAppEditorWidget> self(this);
    const QString snapshotId = m->ui->version_combo->GetCurrentData().toString();
    const int answer = PackagedMsgBox::question(question, this, QMessageBox::Yes | QMessageBox::No);
    if (self && answer == QMessageBox::Yes)
        m->handle.GrayOrRelease(snapshotId, publishType);
}

void RpaAppEditorWidget::SlotGrayOrReleaseFinished(const QString& appId, int publishType, bool needTip)
{
    RequestSnapList(appId);
    emit RpaEditorNotify::Instance()->SigPublishFinished(appId, publishType, needTip);
}
