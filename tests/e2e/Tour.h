#pragma once

#include "TourDriver.h"

#include <QPointer>
#include <QString>

class PageServer;
class QListWidget;
class ToastWatcher;
class Workstation;

// The tour itself: a guest who signs in, opens an app, edits, saves, switches and deletes versions, makes a
// page and a process and runs it, meets a server that is gone and data of a newer client, looks around in the
// dark, and closes the workstation. One source file per theme.
class Tour
{
public:
    Tour(Workstation* workstation, TourDriver* driver, ToastWatcher* toasts);

    // On the tour's own thread.
    void Run();

private:
    void Arrive();
    void OpenVisualApp();
    void WalkThroughPages();
    void Save();
    void UseDropDown();
    void SwitchVersions();
    void DeleteVersions();
    void FoldBrowser();
    void DesignPages();
    void DesignContent();
    void BuildProcess();
    void MeetRefusals();
    void RunProcesses();
    void MoveBrowser();
    void CaptureElements();
    void RunWithPackages();
    void LoseServer();
    void MeetNewerData();
    void LookAround();
    void LookInTheDark();
    void Leave();

    void RefuseRunDuringCapture();
    void CaptureElement();
    void ReadElement();
    void UsePackages();
    void LookAtEditorInTheDark();
    void LookAtAppsInTheDark();

    // Acts
    void OpenApp(int kind);
    void GoToPage(const char* button);
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

    // States
    void UntilLoaded();
    void UntilResult(const QString& text);
    void UntilToast(const QString& text);
    void UntilBox(const QString& text);
    void UntilCurrent(const QString& version);
    void UntilStatement(const QString& title);
    void UntilLog(const QString& text);
    void UntilIdle(std::chrono::milliseconds within);
    static QListWidget* VersionList();
    static int RowOf(const QString& name);

    Workstation* const workstation;
    TourDriver* const d;
    ToastWatcher* const toasts;
    QPointer<PageServer> pages; // the workstation's child
};
