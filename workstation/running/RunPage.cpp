// SPDX-License-Identifier: Apache-2.0

#include "RunPage.h"

#include "RunReport.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppLogWidget.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/versions/GetVersionDataRequest.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbToast.h>

namespace
{
QString VersionText(const VersionServiceReleasedApp& app)
{
    return (app.state == AppSnapshotGray ? QStringLiteral("灰度 · ") : QStringLiteral("线上 · ")) +
           app.versionName;
}
} // namespace

RunPage::RunPage(QWidget* parent)
    : WbBaseWidget(parent), client(std::make_unique<VersionServiceClient>()), runner(new AppRunner(this))
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.statusRun->AddSucceedWidget(ui.splitterRun);
    AddParts();
    Connect();
}

RunPage::~RunPage()
{
    runner->Leave();
}

void RunPage::AddParts()
{
    tools = IAppToolWidget::CreateToolEditor(ui.pageApp);
    params = IAppParamWidget::CreateParamWidget(ui.pageApp);
    table = IAppTableWidget::CreateTableWidget(ui.pageApp);
    table->SetUserEditable(true);
    ui.layoutApp->insertWidget(ui.layoutApp->indexOf(ui.labelNoTools), tools);
    ui.layoutApp->insertWidget(ui.layoutApp->count() - 1, params);
    ui.layoutApp->insertWidget(ui.layoutApp->count() - 1, table, 1); // the stretch counts without it
    auto* log = IAppLogWidget::CreateDevelopLog(ui.splitterApp);
    if (auto* manager = RpaEngineModule::Instance()->GetLogManager())
        log->SetLogDataSource(manager->GetLogDataSource());
    ui.splitterApp->addWidget(log);
    for (QSplitter* splitter : {ui.splitterApp, ui.splitterRun}) {
        splitter->setStretchFactor(0, 3);
        splitter->setStretchFactor(1, 1);
    }
    ui.splitterApp->setSizes({420, 160});
}

void RunPage::Connect()
{
    connect(ui.statusRun, &RequestStatusBaseWidget::SigRefresh, this, &RunPage::Load);
    connect(ui.tabsUI, &QTabBar::currentChanged, this, &RunPage::ShowUIPage);
    connect(tools, &IAppToolWidget::SigRunProcess, runner, &AppRunner::Run);
    connect(tools, &IAppToolWidget::SigStopProcess, runner, &AppRunner::Stop);
    connect(runner, &AppRunner::SigStarted, this, &RunPage::SlotStarted);
    connect(runner, &AppRunner::SigEnded, this, &RunPage::SlotEnded);
    connect(runner, &AppRunner::SigRefused, this,
            [](const QString& reason) { WbToast::Show(reason, ToastError); });
    connect(runner, &AppRunner::SigFailed, this, &RunPage::SlotFailed);
    connect(runner, &AppRunner::SigPackagesFailed, this, &RunPage::SlotPackagesFailed);
    connect(ui.runNotice, &RunNotice::SigAgain, this, &RunPage::RunAgain);
    connect(ui.runNotice, &RunNotice::SigReport, this, &RunPage::Report);
    connect(ui.buttonReport, &QPushButton::clicked, this, &RunPage::Report);
}

void RunPage::Open(const VersionServiceReleasedApp& wanted)
{
    Close();
    released = wanted;
    ui.labelPageTitle->setText(released.app.name);
    setWindowTitle(released.app.name);
    ui.labelVersion->setText(VersionText(released));
    Load();
}

void RunPage::Load()
{
    ui.statusRun->SetStatus(RequestStatus::Loading);
    const quint64 number = ++opened;
    client->Send(GetVersionDataRequest{released.versionId}, this,
                 [this, number](const VersionServiceResult<QByteArray>& result) {
                     if (number != opened)
                         return;
                     if (!result.success) {
                         problem = result.errorDesc;
                         ui.statusRun->SetErrorMsg(problem);
                         ui.statusRun->SetStatus(RequestStatus::Failed);
                     } else if (!ShowApp(released, result.value)) {
                         problem = QStringLiteral("应用的内容无法读取，请点击“发送给作者”告诉应用的创建者。");
                         ui.statusRun->SetErrorMsg(problem);
                         ui.statusRun->SetStatus(RequestStatus::Failed);
                     }
                 });
}

bool RunPage::ShowApp(const VersionServiceReleasedApp& shown, const QByteArray& json)
{
    const auto read = RpaAppDataPtr::create();
    if (!read->Parse(json))
        return false;
    released = shown;
    // As the server names it, whatever the content says.
    read->GetAppExtendInfo()->SetAppKind(released.app.kind);
    read->GetRunTimeInfo()->SetAppId(released.app.id);
    read->GetRunTimeInfo()->SetOxsAppKey(released.app.oxsAppKey);
    read->GetRunTimeInfo()->SetEnvironment(released.state == AppSnapshotGray ? QStringLiteral("gray")
                                                                             : QStringLiteral("online"));
    app = read;
    runner->Leave(); // it may still hold the browser of the app before
    ui.aside->ShowApp(*app);
    runner->SetApp(app, params, table, ui.aside->GetBrowserEngine());
    ui.splitterRun->setSizes(ui.aside->GetBrowserEngine() ? QList<int>{560, 640} : QList<int>{840, 360});
    QStringList names;
    app->GetUIDataManager()->GetAllUIName(names);
    {
        const QSignalBlocker quiet(ui.tabsUI);
        while (ui.tabsUI->count() > 0)
            ui.tabsUI->removeTab(0);
        for (const QString& name : names)
            ui.tabsUI->addTab(QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
    }
    ui.tabsUI->setVisible(names.size() > 1);
    ShowUIPage(0);
    if (auto* manager = RpaEngineModule::Instance()->GetLogManager())
        manager->GetLogDataSource()->Initialize(); // what the app before wrote is not this one's
    ui.statusRun->SetStatus(RequestStatus::Succeeded);
    return true;
}

void RunPage::ShowUIPage(int index)
{
    RpaUIData* const page = app ? app->GetUIDataManager()->GetUIData(index) : nullptr;
    if (page)
        app->GetUIDataManager()->SetIndexActive(index);
    tools->SetToolData(page ? page->GetToolData() : nullptr);
    ui.labelNoTools->setVisible(page && page->GetToolData()->GetCount() == 0);
    params->SetParamData(page ? page->GetParamData() : nullptr);
    table->SetTableData(page ? page->GetTableData() : nullptr);
    table->setVisible(page && !page->GetTableData()->GetColumns().isEmpty());
}

void RunPage::Close()
{
    ++opened;
    runner->Leave();
    app.reset();
    ShowUIPage(-1);
    ui.aside->Clear();
    ui.labelRun->clear();
    ui.runNotice->hide();
    problem.clear();
    details.clear();
    ui.tabsUI->setEnabled(true);
}

// A running process works with the page it was started from.
void RunPage::SlotStarted()
{
    ui.labelRun->setText(QStringLiteral("正在运行…"));
    ui.runNotice->hide();
    problem.clear();
    details.clear();
    ui.tabsUI->setEnabled(false);
    ui.aside->ShowBrowser();
}

void RunPage::SlotEnded()
{
    ui.labelRun->setText(QStringLiteral("运行结束"));
    ui.tabsUI->setEnabled(true);
    // To its user the app is what it holds now; only authors have something of before.
    app->GetUIDataManager()->KeepResults();
}

void RunPage::SlotFailed(const QString& processName, const QString& error, const QString& trace)
{
    failedProcess = processName;
    problem = QStringLiteral("运行失败：%1").arg(error);
    details = trace;
    ui.runNotice->Tell(problem, QStringLiteral("再次运行"), details);
}

void RunPage::SlotPackagesFailed(const QString& processName, const QString& reason)
{
    failedProcess = processName;
    problem = QStringLiteral("没有运行，扩展包没有装好：%1").arg(reason);
    QStringList packages;
    const QVector<PackageState> states = RpaPackageModule::Instance()->GetBuiltIn()->GetStates();
    for (const PackageState& state : states)
        if (state.status != PackageState::Installed)
            packages << QStringLiteral("%1 %2：%3").arg(state.name, state.version, state.problem);
    details = packages.join(QLatin1Char('\n'));
    ui.runNotice->Tell(problem, QStringLiteral("重新安装并运行"), details);
}

void RunPage::RunAgain()
{
    ui.runNotice->hide();
    runner->Run(failedProcess);
}

void RunPage::Report()
{
    if (keptRun)
        keptRun(released.app.id, this, [this](const ReportParts& kept) { ShowReport(kept); });
    else
        ShowReport({});
}

void RunPage::ShowReport(const ReportParts& kept)
{
    const QString name = QStringLiteral("%1（%2）").arg(released.app.name, VersionText(released));
    auto* dialog = new RunReportDialog(RunReportDialog::Parts(name, problem, details, kept), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
