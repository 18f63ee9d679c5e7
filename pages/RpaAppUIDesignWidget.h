// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RpaAppUIDesignWidget.h"

#include <OxBase/IDpiAdapter.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QString>

class IAppParamEngine;
class IAppTableEngine;
class IAppLogWidget;
class IAppParamWidget;
class IAppTableWidget;
class IAppToolWidget;
class RpaUIDataManager;

// The editor page on which the author designs the app's UI pages: one tab per page, panels for its tools,
// parameters and table, the page as its users see it, and the log of development runs. Tabs and the app's
// list of pages are kept in step, and every change marks the app modified.
class RpaAppUIDesignWidget : public WbBaseWidget, public IProcessLifeCycle, public IDpiAdapter
{
    Q_OBJECT

public:
    explicit RpaAppUIDesignWidget(QWidget* parent = nullptr);
    ~RpaAppUIDesignWidget() override;

    // Shows the first page of the app. An app without pages leaves what is shown as it is. Never null.
    void SetRpaAppData(const RpaAppDataPtr& app);

    // The parameters and the table of the active page as a run uses them; null while the page view has none.
    IAppParamEngine* GetAppParamEngine() const;
    IAppTableEngine* GetAppTableEngine() const;

    void AdjustForDpi() override;

    void ProcessStart(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;

signals:
    // The author wants a process of the app to be run or stopped; the text is its name.
    void SigRunProcess(QString strData);
    void SigStopProcess(QString strData);

    // The author wants to see the statement that wrote a line of the log.
    void SigShowStatement(const QString& statementId);
    // The same for a line of the program.
    void SigShowLine(int line);

private slots:
    void SlotShrinkChanged();
    void SlotTabChanged(int index);
    void SlotAddUI();
    void SlotDeleteUI(int index);
    void SlotRenameUI(int index);
    void SlotMoveUI(int from, int to);

private:
    void ShareWidth();
    void InitPageView();
    void InitConnectSignals();
    void ActivatePage(int index);
    RpaUIDataManager* GetUIDataManager() const;

    Ui::RpaAppUIDesignWidget ui;
    RpaAppDataPtr appData;
    // Of the page view, each owned by its host. They must exist once a page is shown.
    IAppToolWidget* toolWidget = nullptr;
    IAppParamWidget* paramWidget = nullptr;
    IAppTableWidget* tableWidget = nullptr;
    IAppLogWidget* logWidget = nullptr;
};
