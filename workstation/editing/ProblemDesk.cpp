// SPDX-License-Identifier: Apache-2.0

#include "ProblemDesk.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProblems/RpaProblemFixes.h>
#include <RpaProblems/RpaProblemPane.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/RpaTabBar.h>
#include <WbBaseUI/WbIconButtonWidget.h>

#include <QAbstractButton>
#include <QTabBar>

ProblemDesk::ProblemDesk(RpaProblemPane* problemPane) : QObject(problemPane), pane(problemPane)
{
    connect(RpaAppDataNotify::Instance(), &RpaAppDataNotify::SigShown, this, &ProblemDesk::SlotShown);
    if (const IRpaDebugger* debugger = RpaEngineModule::Instance()->GetEngineDebugger())
        connect(debugger, &IRpaDebugger::SigCheckNode, this, &ProblemDesk::SlotCheckNode);
    connect(pane, &RpaProblemPane::SigProblemChosen, this, &ProblemDesk::SlotChosen);
    connect(pane, &RpaProblemPane::SigFixAsked, this, &ProblemDesk::SlotFixAsked);
}

void ProblemDesk::SetEditor(QWidget* shownEditor)
{
    editor = shownEditor;
    pane->SetApp(nullptr);
    pane->SetOpen(false);
}

void ProblemDesk::SlotShown(RpaAppData* app)
{
    if (editor)
        pane->SetApp(app);
}

void ProblemDesk::SlotCheckNode(const QList<RpaCheckInfo>& findings)
{
    if (editor)
        pane->ShowRun(findings);
}

void ProblemDesk::SlotChosen(const RpaProblem& problem)
{
    if (!editor)
        return;
    const RpaProblemPlace& place = problem.place;
    switch (place.area) {
    case RpaProblemArea::Process:
        PickPage("pushButtonProcess");
        if (auto* visual = editor->findChild<ProcessVisualEditorWidget*>())
            visual->ShowStatement(place.processName, place.statementId);
        return;
    case RpaProblemArea::Program:
        PickPage("pushButtonProcess");
        if (auto* program = editor->findChild<ProcessProgramEditorWidget*>())
            program->ShowLine(place.line);
        return;
    case RpaProblemArea::Page:
        return ShowUIPage(place.page);
    case RpaProblemArea::Packages:
        return ShowPackages();
    case RpaProblemArea::Elements:
        return PickPage("pushButtonProcess");
    case RpaProblemArea::Manual:
        return PickPage("pushButtonExtend");
    }
}

void ProblemDesk::SlotFixAsked(const RpaProblem& problem)
{
    RpaAppData* const app = pane->GetApp();
    if (!editor || !app)
        return;
    auto* visual = editor->findChild<ProcessVisualEditorWidget*>();
    if (problem.place.area == RpaProblemArea::Process) {
        if (visual)
            visual->MakeFix(problem);
        return;
    }
    if (!RpaProblemFixes::MakeInApp(*app, problem))
        return;
    // The list of packages is shown and installed from the service's own copy.
    if (IPackageService* const service = RpaPackageModule::Instance()->GetService())
        service->Reset(QString::fromUtf8(app->GetPackageInfo()->ToJson()));
}

void ProblemDesk::PickPage(const char* button) const
{
    auto* const choice = editor->findChild<WbIconButtonWidget*>(QLatin1String(button));
    if (choice && !choice->bSelected)
        emit choice->SigClicked();
}

void ProblemDesk::ShowUIPage(const QString& name) const
{
    PickPage("pushButtonUI");
    const RpaAppData* const app = pane->GetApp();
    const auto* bar = editor->findChild<RpaTabBar*>();
    auto* const tabs = bar ? bar->findChild<QTabBar*>() : nullptr;
    if (!app || !tabs)
        return;
    QStringList names;
    app->GetUIDataManager()->GetAllUIName(names);
    tabs->setCurrentIndex(names.indexOf(name)); // one that is gone changes nothing
}

void ProblemDesk::ShowPackages() const
{
    if (auto* button = editor->window()->findChild<QAbstractButton*>(QStringLiteral("buttonPackages")))
        button->click();
}
