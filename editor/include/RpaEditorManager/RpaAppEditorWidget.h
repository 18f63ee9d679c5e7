// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/IDpiAdapter.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QList>
#include <QString>
#include <QVariant>

#include <memory>

#ifdef RPAEDITORMANAGER_BUILDING
#define RPAEDITORMANAGER_EXPORT Q_DECL_EXPORT
#else
#define RPAEDITORMANAGER_EXPORT Q_DECL_IMPORT
#endif

class RobotExecuteInfo;
struct RpaAppEditorMembers;
struct RpaCheckInfo;

// The editor of one app: its UI pages, its process and its usage instructions, with everything that saves,
// runs and releases it. A host shows it as a page, tells it which app to open, and asks it before it closes:
//
//     auto* editor = new RpaAppEditorWidget(page);
//     editor->SetExecuteInfo(info);           // loads the app's versions and opens one
//     …
//     if (RpaGlobalLifeCycle::Instance()->BeforeClose())   // asks the editor, too
//         close();
//
// GUI thread only. Destroying it at any time is allowed, also while it asks the user something.
class RPAEDITORMANAGER_EXPORT RpaAppEditorWidget : public WbBaseWidget,
                                                   public IRpaLifeCycle,
                                                   public IDpiAdapter
{
    Q_OBJECT

public:
    // An empty editor; nothing is loaded before SetExecuteInfo().
    explicit RpaAppEditorWidget(QWidget* parent = nullptr);
    ~RpaAppEditorWidget() override;

    // Opens the app that the information names. The answer of the server arrives later: a version opens, a
    // start from a template is offered, or the reason of a failure is shown together with a button to try
    // again. Called again, it loads the same app's versions anew and takes changed launch information over;
    // another app needs an editor of its own.
    void SetExecuteInfo(const RobotExecuteInfo& info);

    // Asks the user whether unsaved work of a develop version is to be saved, and saves it. Returns when the
    // user has answered and the server has confirmed.
    BeforeCloseResult BeforeClose() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void AdjustForDpi() override;

private slots:
    void SlotRefresh();
    void SlotSave();
    void SlotSaveAs();
    void SlotBeta();
    void SlotPublish();
    void SlotSnapshotChanged(const QVariant& versionId);
    void SlotSnapshotDelete(const QVariant& versionId);
    void SlotTabChanged(int index);
    void SlotRunProcess(const QString& processName);
    void SlotStopProcess(const QString& processName);
    void SlotSaveAppSnapshot(const QString& snapshotId);
    void SlotGetSnapshotListFinished(bool bSuccess, const QString& errorDesc);
    void SlotGetSnapshotData(bool bSuccess, const QString& snapshotId, const RpaAppDataPtr& appDataPtr);
    void SlotGrayOrReleaseFinished(const QString& appId, int publishType, bool needTip);
    void SlotSnapshotDeleted(const QString& snapshotId);
    void SlotExportData();
    void SlotCheckPackageFinished();
    void SlotUpdatePackageInfo(const QString& json);
    void SlotFoldBrowser();
    void SlotUnfoldBrowser();
    void SlotPopup(bool popup);

private:
    // Assembly
    void InitUIStyle();
    void InitConnectSignals();
    void InitTooltip();
    void InitForDpi();
    void LifeCycleControllUI(bool control);

    // Entry
    void SetAppData(const RpaAppDataPtr& appDataPtr);
    void FillAppDataWithExecuteInfo();
    void InitProcessEditor();
    void InitLogDataSource();
    void UpdateAppData();
    void SetAppName(const QString& name);
    void ShowExportBtn(bool show);
    void SetShare(bool share);

    // Close guard
    bool NeedSave() const;
    bool SaveOrNot();
    void ResetToDefault();

    // Versions
    AppSnapshotState GetSnapshotState(const QString& snapshotId) const;
    void InitSnapshotCombo();
    void UpdateSnapshotCombo();
    void RequestSnapList(const QString& appId);
    bool SaveBeforeSwitch();

    // Release
    bool RefuseUnsaved();
    void AskAndRelease(const QString& question, int publishType);

    // Run and packages
    void SetUpEngine();
    bool CheckVisualProcess();
    bool CheckComment(QList<RpaCheckInfo>& list);
    bool IsVisual() const;
    void InitVisiualPackage();
    void CheckPackage(bool visual);
    void UpdatePackageInfo(const QString& json);
    void ResetPackageInfo();

    // Templates
    void ShowTemplatePage();
    QString GetTemplateDir() const;
    void SaveAppData(const QString& name, const QString& direction, const QString& filePath);

    // Browser
    void InitBrowserWidget();
    void PopOutBrowser();
    void DockBrowser();

    // Usage events
    void ReportAction(const QString& eventId) const;
    void UploadTesselExecute(const QString& processName);

    const std::unique_ptr<RpaAppEditorMembers> m;
};
