// SPDX-License-Identifier: Apache-2.0

#include "RunPage.h"

#include "RunAside.h"
#include "RunNotice.h"
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
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/versions/GetVersionDataRequest.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTabBar.h>
#include <WbBaseUI/WbToast.h>

#include <QBoxLayout>
#include <QSplitter>
#include <QToolButton>

namespace
{
QString VersionText(const VersionServiceReleasedApp& app)
{
    return (app.state == 2 ? QStringLiteral("灰度 · ") : QStringLiteral("线上 · ")) + app.versionName;
}
} // namespace

RunPage::RunPage(QWidget* parent)
    : WbBaseWidget(parent), client(std::make_unique<VersionServiceClient>()), runner(new AppRunner(this))
{
    setObjectName(QStringLiteral("RunPage"));
    labelTitle = new WbLabel(this);
    labelTitle->setObjectName(QStringLiteral("labelPageTitle"));
    labelTitle->setTextFormat(Qt::PlainText);
    labelVersion = new WbLabel(this);
    labelVersion->setObjectName(QStringLiteral("labelVersion"));
    labelVersion->setTextFormat(Qt::PlainText);
    labelVersion->setProperty("hint", true);
    labelRun = new WbLabel(this);
    labelRun->setObjectName(QStringLiteral("labelRun"));
    labelRun->setProperty("hint", true);
    auto* head = new QHBoxLayout;
    head->setSpacing(12);
    head->addWidget(labelTitle);
    head->addWidget(labelVersion);
    head->addStretch();
    head->addWidget(labelRun);
    auto* report = new QToolButton(this);
    report->setObjectName(QStringLiteral("buttonReport"));
    report->setText(QStringLiteral("发送给作者"));
    report->setToolTip(QStringLiteral("收集运行日志和版本，发给应用的作者"));
    head->addWidget(report);
    notice = new RunNotice(this);
    status = new RequestStatusBaseWidget(this);
    status->setObjectName(QStringLiteral("statusRun"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->setSpacing(16);
    layout->addLayout(head);
    layout->addWidget(notice);
    layout->addWidget(status, 1);
    layout->addWidget(CreateContent(), 1);
    status->AddSucceedWidget(content);

    connect(status, &RequestStatusBaseWidget::SigRefresh, this, &RunPage::Load);
    connect(tabs, &QTabBar::currentChanged, this, &RunPage::ShowUIPage);
    connect(tools, &IAppToolWidget::SigRunProcess, runner, &AppRunner::Run);
    connect(tools, &IAppToolWidget::SigStopProcess, runner, &AppRunner::Stop);
    connect(runner, &AppRunner::SigStarted, this, &RunPage::SlotStarted);
    connect(runner, &AppRunner::SigEnded, this, &RunPage::SlotEnded);
    connect(runner, &AppRunner::SigRefused, this,
            [](const QString& reason) { WbToast::Show(reason, ToastError); });
    connect(runner, &AppRunner::SigFailed, this, &RunPage::SlotFailed);
    connect(runner, &AppRunner::SigPackagesFailed, this, &RunPage::SlotPackagesFailed);
    connect(notice, &RunNotice::SigAgain, this, &RunPage::RunAgain);
    connect(notice, &RunNotice::SigReport, this, &RunPage::Report);
    connect(report, &QToolButton::clicked, this, &RunPage::Report);
    WbScaledForm::Follow(this);
}

RunPage::~RunPage()
{
    runner->Leave();
}

QWidget* RunPage::CreateContent()
{
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(CreateAppSide(splitter));
    aside = new RunAside(splitter);
    splitter->addWidget(aside);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    content = splitter;
    return content;
}

QWidget* RunPage::CreateAppSide(QWidget* parent)
{
    auto* side = new QSplitter(Qt::Vertical, parent);
    side->setChildrenCollapsible(false);
    auto* page = new QWidget(side);
    tabs = new WbTabBar(page);
    tabs->setObjectName(QStringLiteral("tabsUI"));
    tools = IAppToolWidget::CreateToolEditor(page);
    labelNoTools =
        new WbLabel(QStringLiteral("这个界面没有可以运行的按钮。请换一个界面，或告诉应用的创建者。"), page);
    labelNoTools->setObjectName(QStringLiteral("labelNoTools"));
    labelNoTools->setProperty("hint", true);
    labelNoTools->setWordWrap(true);
    params = IAppParamWidget::CreateParamWidget(page);
    table = IAppTableWidget::CreateTableWidget(page);
    table->SetUserEditable(true);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(tabs);
    layout->addWidget(tools);
    layout->addWidget(labelNoTools);
    layout->addWidget(params);
    layout->addWidget(table, 1);
    layout->addStretch(); // counts while there is no table
    log = IAppLogWidget::CreateDevelopLog(side);
    if (auto* manager = RpaEngineModule::Instance()->GetLogManager())
        log->SetLogDataSource(manager->GetLogDataSource());
    side->addWidget(page);
    side->addWidget(log);
    side->setStretchFactor(0, 3);
    side->setStretchFactor(1, 1);
    side->setSizes({420, 160});
    return side;
}

void RunPage::Open(const VersionServiceReleasedApp& wanted)
{
    Close();
    released = wanted;
    labelTitle->setText(released.app.name);
    setWindowTitle(released.app.name);
    labelVersion->setText(VersionText(released));
    Load();
}

void RunPage::Load()
{
    status->SetStatus(RequestStatus::Loading);
    const quint64 number = ++opened;
    client->Send(GetVersionDataRequest{released.versionId}, this,
                 [this, number](const VersionServiceResult<QByteArray>& result) {
                     if (number != opened)
                         return;
                     if (!result.success) {
                         problem = result.errorDesc;
                         status->SetErrorMsg(problem);
                         status->SetStatus(RequestStatus::Failed);
                     } else if (!ShowApp(released, result.value)) {
                         problem = QStringLiteral("应用的内容无法读取，请点击“发送给作者”告诉应用的创建者。");
                         status->SetErrorMsg(problem);
                         status->SetStatus(RequestStatus::Failed);
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
    read->GetRunTimeInfo()->SetEnvironment(released.state == 2 ? QStringLiteral("gray")
                                                               : QStringLiteral("online"));
    app = read;
    runner->Leave(); // it may still hold the browser of the app before
    aside->ShowApp(*app);
    runner->SetApp(app, params, table, aside->GetBrowserEngine());
    content->setSizes(aside->GetBrowserEngine() ? QList<int>{560, 640} : QList<int>{840, 360});
    QStringList names;
    app->GetUIDataManager()->GetAllUIName(names);
    {
        const QSignalBlocker quiet(tabs);
        while (tabs->count() > 0)
            tabs->removeTab(0);
        for (const QString& name : names)
            tabs->addTab(QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
    }
    tabs->setVisible(names.size() > 1);
    ShowUIPage(0);
    if (auto* manager = RpaEngineModule::Instance()->GetLogManager())
        manager->GetLogDataSource()->Initialize(); // what the app before wrote is not this one's
    status->SetStatus(RequestStatus::Succeeded);
    return true;
}

void RunPage::ShowUIPage(int index)
{
    RpaUIData* const page = app ? app->GetUIDataManager()->GetUIData(index) : nullptr;
    if (page)
        app->GetUIDataManager()->SetIndexActive(index);
    tools->SetToolData(page ? page->GetToolData() : nullptr);
    labelNoTools->setVisible(page && page->GetToolData()->GetCount() == 0);
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
    aside->Clear();
    labelRun->clear();
    notice->hide();
    problem.clear();
    details.clear();
    tabs->setEnabled(true);
}

// A running process works with the page it was started from.
void RunPage::SlotStarted()
{
    labelRun->setText(QStringLiteral("正在运行…"));
    notice->hide();
    problem.clear();
    details.clear();
    tabs->setEnabled(false);
    aside->ShowBrowser();
}

void RunPage::SlotEnded()
{
    labelRun->setText(QStringLiteral("运行结束"));
    tabs->setEnabled(true);
    // To its user the app is what it holds now; only authors have something of before.
    app->GetUIDataManager()->KeepResults();
}

void RunPage::SlotFailed(const QString& processName, const QString& error, const QString& trace)
{
    failedProcess = processName;
    problem = QStringLiteral("运行失败：%1").arg(error);
    details = trace;
    notice->Tell(problem, QStringLiteral("再次运行"), details);
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
    notice->Tell(problem, QStringLiteral("重新安装并运行"), details);
}

void RunPage::RunAgain()
{
    notice->hide();
    runner->Run(failedProcess);
}

void RunPage::Report()
{
    const QString name = QStringLiteral("%1（%2）").arg(released.app.name, VersionText(released));
    auto* dialog = new RunReportDialog(RunReportDialog::Write(name, problem, details), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
