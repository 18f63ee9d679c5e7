// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TourDriver.h"
#include "WorkstationSettings.h"

#include <QPointer>
#include <QString>

class PageServer;
class QListWidget;
class ToastWatcher;
class Workstation;

// The tour itself: a guest who signs in, opens an app, edits, saves, switches and deletes versions, makes a
// page and a process and runs it, meets a server that is gone and data of a newer client, makes a template,
// releases an app on a server with accounts and uses it there as somebody else, looks around in the dark, and
// closes the workstation. One source file per theme.
class Tour
{
public:
    Tour(Workstation* workstation, TourDriver* driver, ToastWatcher* toasts);

    // On the tour's own thread.
    void Run();
    // The hour without a mouse alone.
    void RunByKeyboard();

private:
    void Arrive();
    void OpenVisualApp();
    void SeeCreatorsButtons();
    void WalkThroughPages();
    void Save();
    void UseDropDown();
    void SeeVersionDetails();
    void SwitchVersions();
    void DeleteVersions();
    void FoldBrowser();
    void DesignPages();
    void DesignContent();
    void BuildProcess();
    void MeetRefusals();
    void RunProcesses();
    void SeeRunHistory();
    void MoveBrowser();
    void CaptureElements();
    void RunWithPackages();
    void LoseServer();
    void MeetNewerData();
    void SeeSuperAdministratorsButtons();
    void ExportTemplate();
    void VisitServer();
    void LookAround();
    void MoveApps();
    void ThrowAway(const QString& app);
    void ScrollSettings();
    void SeeColleaguesButtons();
    void LookInTheDark();
    void WorkByKeyboard();
    void Leave();

    void RefuseRunDuringCapture();
    void CaptureElement();
    void ReadElement();
    void UsePackages();
    void LookAtEditorInTheDark();
    void LookAtAppsInTheDark();

    // On a server with accounts
    void GoToServer(const QString& address);
    void StartFromShippedTemplate();
    void StartFromOwnTemplate();
    void LetDataGoAlong();
    void PublishDevelopVersion();
    void ReleaseGrayVersion();
    void PublishGrayVersion();
    void TakeBackVersions();
    void ChangeAccount();
    void UseOnlineApp();
    void UseGrayApp();
    void ReturnToOwnServer();

    // Acts
    void OpenApp(int kind);
    void GoToPage(const char* button);
    // As keys would: it may stand below the edge of a page that scrolls.
    void GiveFocus(const char* objectName);
    void EditInstructions(const QString& text);
    void OpenDropDown();
    void PressRow(const QString& name);
    void HoverRow(const QString& name);
    void PressDelete(const QString& name);
    void DeleteVersion(const QString& name);
    void BackToList();
    void NamePage(const QString& name);
    void AddRecord(const char* panel, const QString& text);
    void WriteCell(const char* panel, int column, const QString& text);
    void ChooseCell(const char* panel, int column, const QString& title);
    void ChooseFromCombo(const QString& title);
    void AddProcess(const QString& name);
    void GoToProcess(const QString& name);
    void AddStatement(const QString& title);
    void GoToStatement(int line);
    void FillField(const char* argument, const QString& text);
    void FillOutput(const QString& name);
    void PressTool(const char* text);
    // Gives the first tool of the page another process.
    void LetFirstToolRun(const QString& process);
    // Opens the tour's own page in the embedded browser.
    void OpenPage();
    void WriteProgram(const QStringList& lines);
    void UseTheme(ThemeChoice theme);
    void SeeInTheDark(const QString& step);
    void SwitchSuperAdministrator();
    void SignIn(const QString& account, const QString& password);
    void CreateApp(const char* button, const QString& name);
    void PressCard(const char* list, const QString& name);
    void ChooseFromMenu(const QString& entry);
    void ChooseFromCard(const QString& app, const QString& entry);
    void NameFile(const QString& path);
    void ShowReleases(const QString& app);
    void AskToTakeBack(const QString& button);
    void SaveAs(const QString& name);
    void SwitchTo(const QString& name, const QString& lineOfAnother);
    void Answer(const QString& button);
    void RunReleasedApp(const QString& version);

    // States
    void UntilLoaded();
    void UntilResult(const QString& text);
    void UntilToast(const QString& text);
    void UntilBox(const QString& text);
    void UntilCurrent(const QString& version);
    void UntilStatement(const QString& title);
    void UntilLog(const QString& text);
    void UntilIdle(std::chrono::milliseconds within);
    void UntilOffered(const QString& buttons);
    void UntilTemplates(const QStringList& names);
    void UntilState(const QString& version, int state);
    static QListWidget* VersionList();
    static int RowOf(const QString& name);

    Workstation* const workstation;
    TourDriver* const d;
    ToastWatcher* const toasts;
    const ThemeChoice usualTheme; // outside the steps that look at the dark scheme
    QPointer<PageServer> pages;   // the workstation's child
    const QString releasedApp = QStringLiteral("工时应用");
};
