// SPDX-License-Identifier: Apache-2.0

#include "AppListController.h"

#include "AppListModel.h"
#include "AppListPage.h"
#include "AppNameDialog.h"
#include "AppTagsDialog.h"

#include <RpaServiceClient/apps/CopyAppRequest.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <RpaServiceClient/apps/RenameAppRequest.h>
#include <RpaServiceClient/apps/SetTagsRequest.h>
#include <WbBaseUI/WbToast.h>

#include <QPointer>

#include <utility>

AppListController::AppListController(AppListModel* apps, AppListPage* listPage, const QString& openedFile)
    : model(apps), page(listPage), opened(openedFile)
{
}

void AppListController::Refresh()
{
    // A list that is on the screen stays there until the new one has come.
    if (model->rowCount() == 0)
        page->ShowLoading();
    const quint64 refresh = ++lastRefresh;
    client.Send(ListAppsRequest{}, this,
                [this, refresh](const VersionServiceResult<QVector<VersionServiceApp>>& result) {
                    if (refresh != lastRefresh)
                        return;
                    if (!result.success) {
                        page->ShowFailed(result.errorDesc);
                        return;
                    }
                    model->SetApps(opened.Sorted(account, result.value));
                    page->ShowApps();
                    page->SelectApp(std::exchange(selectNext, QString()));
                });
}

void AppListController::RefreshAndSelect(const QString& appId)
{
    selectNext = appId;
    Refresh();
}

void AppListController::Forget()
{
    ++lastRefresh;
    selectNext.clear();
    model->SetApps({});
}

void AppListController::NoteOpened(const QString& appId)
{
    opened.Note(account, appId, QDateTime::currentDateTimeUtc());
}

void AppListController::Create(int kind)
{
    created = AppRecord();
    const QPointer<AppListController> guard(this);
    auto* dialog = new AppNameDialog(AppNameDialog::Purpose::Create, page);
    dialog->SetKind(kind);
    connect(dialog, &AppNameDialog::SigConfirmed, this, [this, dialog] {
        client.Send(CreateAppRequest{dialog->GetName(), dialog->GetKind()}, dialog,
                    [this, dialog](const VersionServiceResult<VersionServiceApp>& result) {
                        ShowOutcome(dialog, result.success, result.errorDesc, result.value);
                        if (result.success)
                            created = result.value;
                    });
    });
    Ask(dialog);
    // Not within the answer: an editor opens, and this dialog is modal until it has gone.
    if (guard && !created.id.isEmpty())
        emit SigCreated(std::exchange(created, AppRecord()));
}

void AppListController::Rename(const AppRecord& app)
{
    auto* dialog = new AppNameDialog(AppNameDialog::Purpose::Rename, page);
    dialog->SetName(app.name);
    connect(dialog, &AppNameDialog::SigConfirmed, this, [this, dialog, app] {
        client.Send(RenameAppRequest{app.id, dialog->GetName()}, dialog,
                    [this, dialog](const VersionServiceResult<VersionServiceApp>& result) {
                        ShowOutcome(dialog, result.success, result.errorDesc, result.value);
                    });
    });
    Ask(dialog);
}

void AppListController::EditTags(const AppRecord& app)
{
    auto* dialog = new AppTagsDialog(app, model->GetTags(), page);
    connect(dialog, &AppTagsDialog::SigConfirmed, this, [this, dialog, app] {
        client.Send(SetTagsRequest{app.id, dialog->GetTags()}, dialog,
                    [this, dialog](const VersionServiceResult<VersionServiceApp>& result) {
                        if (!result.success) {
                            dialog->ShowProblem(result.errorDesc);
                            return;
                        }
                        dialog->accept();
                        RefreshAndSelect(result.value.id);
                    });
    });
    Ask(dialog);
}

void AppListController::Copy(const AppRecord& app)
{
    client.Send(
        CopyAppRequest{app.id}, this, [this, app](const VersionServiceResult<VersionServiceApp>& result) {
            if (!result.success) {
                WbToast::Show(QStringLiteral("“%1”没有复制：%2").arg(app.name, result.errorDesc), ToastError);
                return;
            }
            WbToast::Show(QStringLiteral("已复制为“%1”").arg(result.value.name), ToastSuccess);
            RefreshAndSelect(result.value.id);
        });
}

// The page takes the dialog along when the workstation closes; nothing of either is touched after that.
void AppListController::Ask(QDialog* dialog)
{
    const QPointer<QDialog> guard(dialog);
    dialog->exec();
    delete guard;
}

void AppListController::ShowOutcome(AppNameDialog* dialog, bool success, const QString& problem,
                                    const VersionServiceApp& app)
{
    if (!success) {
        dialog->ShowProblem(problem);
        return;
    }
    dialog->accept();
    RefreshAndSelect(app.id);
}
