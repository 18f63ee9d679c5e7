// SPDX-License-Identifier: Apache-2.0

#include "DraftController.h"

#include "DraftDialog.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>
#include <WbBaseUI/WbToast.h>
#include <WbCore/WbGlobalData.h>
#include <WbFoundation/Utils.h>

#include <QPointer>

namespace
{
void TellFailure(const QString& problem)
{
    WbToast::Show(QStringLiteral("未保存的修改暂时无法保留草稿，请及时保存。%1").arg(problem), ToastWarning);
}

void TellTooLarge(const QString& what)
{
    WbToast::Show(QStringLiteral("%1，无法保存，之后的修改也没有保留草稿。请减少内容后再继续").arg(what),
                  ToastWarning);
}
} // namespace

DraftController::DraftController(SaveLedger* saves, QWidget* mainWindow) : ledger(saves), window(mainWindow)
{
    journal.SetBaseQuery([](const QString& versionId) {
        return RpaEditorLogic::Instance()->GetDevSnapshotManager()->GetBaseRevision(versionId);
    });
    connect(&journal, &RpaDraftJournal::SigFailed, this, &TellFailure);
    connect(&journal, &RpaDraftJournal::SigTooLarge, this, &TellTooLarge);
    connect(ledger, &SaveLedger::SigSaveConfirmed, &journal, &RpaDraftJournal::Confirm);
    connect(RpaEditorNotify::Instance(), &RpaEditorNotify::SigVersionPicked, this,
            &DraftController::LeaveVersion);
}

void DraftController::Start(const QString& folder)
{
    QString problem;
    if (!journal.Start(folder, &problem))
        TellFailure(problem);
}

void DraftController::Offer(const AppRecord& app)
{
    if (isBusy)
        return;
    const QString account = WbGlobalData::Instance()->GetPin();
    if (!journal.HasDrafts(account, app.id)) {
        emit SigReady(app);
        return;
    }
    isBusy = true;
    journal.Read(
        account, app.id, this, [this, app](const QVector<RpaDraft>& drafts, const QStringList& refusals) {
            for (const QString& refusal : refusals)
                WbToast::Show(QStringLiteral("有一份草稿无法使用：%1").arg(refusal), ToastWarning);
            if (drafts.isEmpty()) {
                Ready(app);
                return;
            }
            client.Send(
                ListVersionsRequest{app.id}, this,
                [this, app, drafts](const VersionServiceResult<QVector<VersionServiceVersion>>& result) {
                    if (result.success)
                        Ask(app, drafts, result.value);
                    else
                        WbToast::Show(QStringLiteral("有未保存的草稿，下次打开该应用时再询问：%1")
                                          .arg(result.errorDesc),
                                      ToastWarning);
                    Ready(app);
                });
        });
}

void DraftController::Ready(const AppRecord& app)
{
    isBusy = false;
    emit SigReady(app);
}

void DraftController::Ask(const AppRecord& app, const QVector<RpaDraft>& drafts,
                          const QVector<VersionServiceVersion>& versions)
{
    for (const RpaDraft& draft : drafts) {
        const DraftPlan plan = DraftPlan::For(draft, versions);
        if (plan.isSaved) {
            journal.Remove(draft);
            continue;
        }
        if (!CanOpen(draft))
            continue;
        const QPointer<DraftDialog> dialog = new DraftDialog(app.name, draft, plan, dateLanguage, window);
        dialog->exec();
        if (!dialog)
            return; // the workstation closes; the draft stays
        const DraftDialog::Choice choice = dialog->GetChoice();
        delete dialog;
        if (choice == DraftDialog::Choice::Discard) {
            journal.Remove(draft);
        } else if (choice == DraftDialog::Choice::Restore) {
            Restore(draft, plan);
            return; // an editor shows one; the others are asked about the next time
        }
    }
}

// Tried before the author is asked: an editor shows a new app in the place of content that it cannot read.
bool DraftController::CanOpen(const RpaDraft& draft)
{
    RpaAppData trial;
    if (!trial.Parse(draft.content) || trial.GetAppExtendInfo()->GetAppId() != draft.appId) {
        journal.SetAside(draft);
        WbToast::Show(QStringLiteral("有一份草稿的内容不属于该应用，已另外保留"), ToastWarning);
        return false;
    }
    if (Utils::CompareVersion(RpaGlobalDataManager::Instance()->GetApiVersion(), trial.GetVersion()) < 0) {
        WbToast::Show(QStringLiteral("有一份草稿由更新版本的工作站写入，请更新后再打开该应用"), ToastWarning);
        return false;
    }
    return true;
}

void DraftController::Restore(const RpaDraft& draft, const DraftPlan& plan)
{
    const RpaContentOrigin origin{draft.versionId, draft.baseRevision, draft.name, draft.inDoubt};
    if (plan.targetId.isEmpty())
        RpaStartContent::Set(draft.content, origin);
    else
        RpaEditorLogic::Instance()->Restore({plan.targetId, plan.targetRevision, draft.content, origin});
}

bool DraftController::Keeps(const QString& appId)
{
    journal.Finish();
    return journal.HasDrafts(WbGlobalData::Instance()->GetPin(), appId);
}

bool DraftController::RestoresStart()
{
    return RpaStartContent::IsSet();
}

// The editor asks before it leaves unsaved work for another version, and leaves it marked when it is not to be
// saved. It does not ask about work on a released version. And it leaves the mark, too, when the answer was to
// save and a save is under way already.
void DraftController::LeaveVersion()
{
    const RpaAppData* const app = journal.GetLastEdited();
    if (!app || !app->GetModified() || ledger->HasSavesInFlight())
        return;
    const RpaAppSnapshotPtr version =
        RpaEditorLogic::Instance()->GetDevSnapshotManager()->GetSnapshot(app->GetOrigin().versionId);
    if (!version || version->GetState() == AppSnapshotDevelop)
        journal.GiveUp();
}

void DraftController::Open(const AppRecord& app)
{
    journal.Open(WbGlobalData::Instance()->GetPin(), app.id);
}

void DraftController::Close()
{
    journal.Close();
    RpaEditorLogic::Instance()->ForgetRestored();
    RpaStartContent::Clear();
}
