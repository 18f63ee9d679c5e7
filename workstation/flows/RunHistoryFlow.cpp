// SPDX-License-Identifier: Apache-2.0

#include "RunHistoryFlow.h"

#include "EditorPage.h"
#include "MainWindow.h"
#include "RunHistoryDialog.h"
#include "RunPage.h"
#include "Session.h"
#include "WorkstationSettings.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/WbToast.h>

#include <QComboBox>
#include <QLineEdit>

RunHistoryFlow::RunHistoryFlow(const QString& place, const Session* ofUser, WorkstationSettings* store,
                               const EditorPage* editorPage, const RunPage* runPage, MainWindow* mainWindow)
    : folder(place), session(ofUser), settings(store), editor(editorPage), users(runPage), window(mainWindow)
{
    history.SetContext([this](const QString& appId) { return ContextOf(appId); });
    history.SetKeeping(settings->GetKeepsRuns());
    const RpaEngineModule* const engine = RpaEngineModule::Instance();
    history.Follow(engine->GetLogManager()->GetLogDataSource(), engine->GetEngineDebugger());
    connect(settings, &WorkstationSettings::SigKeepsRunsChanged, &history, &RpaRunHistory::SetKeeping);
    connect(window, &MainWindow::SigRuns, this, &RunHistoryFlow::Show);
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
    } else if (users->GetReleased().app.id == appId) {
        run.appName = users->GetReleased().app.name;
        run.versionId = users->GetReleased().versionId;
        run.versionName = users->GetReleased().versionName;
    }
    return run;
}

void RunHistoryFlow::Show()
{
    if (!editor->IsOpen())
        return;
    auto* dialog = new RunHistoryDialog(&history, editor->GetApp().id, settings, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
