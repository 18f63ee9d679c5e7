// SPDX-License-Identifier: Apache-2.0

#include "ResultsBar.h"

#include "ui_ResultsBar.h"

#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <WbBaseUI/WbScaledForm.h>

namespace
{
QString WhatRunsWrote(const RpaUIDataManager& pages)
{
    int values = 0;
    QStringList parts;
    for (int index = 0; index < pages.GetCount(); ++index) {
        const RpaUIData* const page = pages.GetUIData(index);
        values += page->GetParamData()->GetResultCount();
        if (page->GetTableData()->HasResults())
            parts << QStringLiteral("“%1”的表格（现有 %2 行，运行前 %3 行）")
                         .arg(page->GetName())
                         .arg(page->GetTableData()->GetRowCount())
                         .arg(page->GetTableData()->GetStoredRowCount());
    }
    if (values > 0)
        parts.prepend(QStringLiteral("%1 个参数的值").arg(values));
    return parts.join(QStringLiteral("、"));
}
} // namespace

ResultsBar::ResultsBar(QWidget* parent) : QFrame(parent)
{
    Ui::ResultsBar ui;
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    text = ui.labelResults;
    hide();
    connect(ui.buttonKeepResults, &QPushButton::clicked, this, &ResultsBar::Keep);
    connect(ui.buttonRestoreResults, &QPushButton::clicked, this, &ResultsBar::Restore);
    connect(RpaAppDataNotify::Instance(), &RpaAppDataNotify::SigResultsChanged, this,
            &ResultsBar::SlotResultsChanged);
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
}

ResultsBar::~ResultsBar()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
}

void ResultsBar::Forget()
{
    app.clear();
    Update();
}

void ResultsBar::SlotResultsChanged(RpaAppData* changed)
{
    if (changed->GetUIDataManager()->HasResults()) {
        if (app != changed) {
            app = changed;
            connect(changed, &QObject::destroyed, this, &ResultsBar::Update);
        }
    } else if (app == changed) {
        app.clear();
    }
    Update();
}

void ResultsBar::ProcessStart(const QString&)
{
    isRunning = true;
    Update();
}

void ResultsBar::ProcessFinish(const QString&)
{
    isRunning = false;
    Update();
}

void ResultsBar::Keep()
{
    if (!app)
        return;
    RpaAppData* const kept = app;
    kept->GetUIDataManager()->KeepResults();
    kept->SetModified(true);
}

void ResultsBar::Restore()
{
    if (app)
        app->GetUIDataManager()->RestoreResults();
}

void ResultsBar::Update()
{
    const bool offers = app && !isRunning;
    if (offers)
        text->setText(QStringLiteral("运行结果：%1。不保留时，保存、导出和发布的仍是运行前的数据。")
                          .arg(WhatRunsWrote(*app->GetUIDataManager())));
    setVisible(offers);
}
