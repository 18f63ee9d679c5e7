// SPDX-License-Identifier: Apache-2.0

#include "RunHistoryFlow.h"

#include "EditorPage.h"
#include "MainWindow.h"
#include "RunAccount.h"
#include "RunHistoryDialog.h"
#include "RunPage.h"
#include "Session.h"
#include "WorkstationSettings.h"

#include <RpaAppTool/IAppLogWidget.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>

namespace
{
// Names of versions are unique within an app. Empty when it is none of the list.
QString VersionIdOf(const QString& name)
{
    const RpaSnapshotManager* const manager = RpaEditorLogic::Instance()->GetDevSnapshotManager();
    for (int i = 0; i < manager->GetCount(); ++i)
        if (manager->GetSnapshot(i)->GetName() == name)
            return manager->GetSnapshotId(i);
    return QString();
}
} // namespace

RunHistoryFlow::RunHistoryFlow(const QString& place, const Session* ofUser, WorkstationSettings* store,
                               const EditorPage* editorPage, RunPage* runPage, MainWindow* mainWindow)
    : folder(place), session(ofUser), settings(store), editor(editorPage), users(runPage), window(mainWindow)
{
    history.SetContext([this](const QString& appId) { return ContextOf(appId); });
    history.SetPicture(BrowserPicture);
    runPage->SetKeptRun([this](const QString& appId, QObject* context, const auto& answer) {
        TellKeptRun(appId, context, answer);
    });
    history.SetKeeping(settings->GetKeepsRuns());
    const RpaEngineModule* const engine = RpaEngineModule::Instance();
    history.Follow(engine->GetLogManager()->GetLogDataSource(), engine->GetEngineDebugger());
    connect(settings, &WorkstationSettings::SigKeepsRunsChanged, &history, &RpaRunHistory::SetKeeping);
    connect(window, &MainWindow::SigRuns, this, &RunHistoryFlow::Show);
    connect(editor, &EditorPage::SigOpened, this, &RunHistoryFlow::Follow);
    connect(editor, &EditorPage::SigLeft, this, [this] { delete dialog; });
    connect(&history, &RpaRunHistory::SigFailed, this, [](const QString& problem) {
        WbToast::Show(QStringLiteral("运行记录没有保存：%1").arg(problem), ToastWarning);
    });
}

RpaRunRecord RunHistoryFlow::ContextOf(const QString& appId) const
{
    RpaRunRecord run;
    run.account = session->GetName();
    if (editor->IsOpen() && editor->GetApp().id == appId) {
        run.appName = editor->GetApp().name;
        const auto* versions = editor->findChild<QComboBox*>(QStringLiteral("version_combo"));
        run.versionName = versions ? versions->lineEdit()->text() : QString();
        run.versionId = VersionIdOf(run.versionName);
        run.revision = RpaEditorLogic::Instance()->GetDevSnapshotManager()->GetBaseRevision(run.versionId);
    } else if (users->GetReleased().app.id == appId) {
        run.appName = users->GetReleased().app.name;
        run.versionId = users->GetReleased().versionId;
        run.versionName = users->GetReleased().versionName;
    }
    return run;
}

QImage RunHistoryFlow::BrowserPicture()
{
    for (QWidget* widget : QApplication::allWidgets())
        if (auto* browser = qobject_cast<IBrowserWidget*>(widget); browser && browser->isVisible())
            return browser->grab().toImage();
    return QImage();
}

void RunHistoryFlow::TellKeptRun(const QString& appId, QObject* context,
                                 const std::function<void(const ReportParts& parts)>& answer)
{
    RpaRunFilter newest;
    newest.appId = appId;
    newest.most = 1;
    history.List(newest, context, [this, context, answer](const QVector<RpaRunRecord>& runs) {
        const qint64 id = runs.value(0).id;
        history.Read(id, context, [=](const RpaRunRecord& run, const QVector<RpaLogLine>& lines) {
            history.ReadDetails(id, context, [=](const RpaRunDetails& details) {
                answer(run.id == 0 ? ReportParts() : RunAccount::Parts(run, lines, details));
            });
        });
    });
}

void RunHistoryFlow::Follow(QWidget* openedEditor)
{
    log = openedEditor->findChild<IAppLogWidget*>();
    if (log)
        connect(log, &IAppLogWidget::SigShowFailure, this, &RunHistoryFlow::ShowFailure);
}

void RunHistoryFlow::Show()
{
    if (editor->IsOpen())
        Open();
}

void RunHistoryFlow::ShowFailure()
{
    if (editor->IsOpen())
        Open()->ShowLastFailure();
}

// Beside the editor, not before it: a click in the timeline goes to the statement.
RunHistoryDialog* RunHistoryFlow::Open()
{
    if (!dialog) {
        dialog = new RunHistoryDialog(&history, editor->GetApp().id, settings, window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        connect(dialog, &RunHistoryDialog::SigShowPlace, this, &RunHistoryFlow::ShowPlace);
    }
    dialog->setModal(false);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

// On the way that a line of the log takes.
void RunHistoryFlow::ShowPlace(const RpaRunPlace& place)
{
    if (!log)
        return;
    if (!place.statementId.isEmpty())
        emit log->SigShowStatement(place.statementId);
    else if (place.line > 0)
        emit log->SigShowLine(place.line);
}
