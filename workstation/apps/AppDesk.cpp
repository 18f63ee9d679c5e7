#include "AppDesk.h"

#include "AppListModel.h"
#include "AppListPage.h"
#include "AppNameDialog.h"

#include <RpaEditorLogic/VersionServiceClient.h>

#include <QPointer>

namespace
{
AppRecord RecordOf(const VersionServiceApp& app)
{
    AppRecord record;
    record.id = app.id;
    record.name = app.name;
    record.kind = app.kind;
    record.creator = app.creatorPin;
    record.creatorName = app.creatorName;
    record.oxsAppKey = app.oxsAppKey;
    record.changedAt = app.changedAt;
    return record;
}
} // namespace

AppDesk::AppDesk(AppListModel* apps, AppListPage* listPage, QObject* parent)
    : QObject(parent), model(apps), page(listPage), client(std::make_unique<VersionServiceClient>())
{
}

AppDesk::~AppDesk() = default;

void AppDesk::Refresh()
{
    // A list that is on the screen stays there until the new one has come.
    if (model->rowCount() == 0) {
        page->ShowLoading();
    }
    const quint64 refresh = ++lastRefresh;
    client->ListApps(QString(), this,
                     [this, refresh](const VersionServiceResult<QVector<VersionServiceApp>>& result) {
                         if (refresh != lastRefresh) {
                             return;
                         }
                         if (!result.success) {
                             page->ShowFailed(result.errorDesc);
                             return;
                         }
                         QVector<AppRecord> records;
                         for (const VersionServiceApp& app : result.value) {
                             records << RecordOf(app);
                         }
                         model->SetApps(records);
                         page->ShowApps();
                         page->SelectApp(std::exchange(selectNext, QString()));
                     });
}

void AppDesk::RefreshAndSelect(const QString& appId)
{
    selectNext = appId;
    Refresh();
}

void AppDesk::Forget()
{
    ++lastRefresh;
    selectNext.clear();
    model->SetApps({});
}

void AppDesk::Create(int kind)
{
    auto* dialog = new AppNameDialog(AppNameDialog::Purpose::Create, page);
    dialog->SetKind(kind);
    connect(dialog, &AppNameDialog::SigConfirmed, this, [this, dialog] {
        client->CreateApp(dialog->GetName(), dialog->GetKind(), dialog,
                          [this, dialog](const VersionServiceResult<VersionServiceApp>& result) {
                              ShowOutcome(dialog, result.success, result.errorDesc, result.value);
                          });
    });
    Ask(dialog);
}

void AppDesk::Rename(const AppRecord& app)
{
    auto* dialog = new AppNameDialog(AppNameDialog::Purpose::Rename, page);
    dialog->SetName(app.name);
    connect(dialog, &AppNameDialog::SigConfirmed, this, [this, dialog, app] {
        client->RenameApp(app.id, dialog->GetName(), dialog,
                          [this, dialog](const VersionServiceResult<VersionServiceApp>& result) {
                              ShowOutcome(dialog, result.success, result.errorDesc, result.value);
                          });
    });
    Ask(dialog);
}

// The page takes the dialog along when the workstation closes; nothing of either is touched after that.
void AppDesk::Ask(AppNameDialog* dialog)
{
    const QPointer<AppNameDialog> guard(dialog);
    dialog->exec();
    delete guard;
}

void AppDesk::ShowOutcome(AppNameDialog* dialog, bool success, const QString& problem,
                          const VersionServiceApp& app)
{
    if (!success) {
        dialog->ShowProblem(problem);
        return;
    }
    dialog->accept();
    RefreshAndSelect(app.id);
}
