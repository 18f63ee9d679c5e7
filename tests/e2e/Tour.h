#pragma once

#include "TourDriver.h"

#include <QString>

class QListWidget;
class ToastWatcher;
class Workstation;

// The tour itself: a guest who signs in, opens an app, edits, saves, switches and deletes versions, meets a
// server that is gone and data of a newer client, looks around in the dark, and closes the workstation.
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
    void LoseServer();
    void MeetNewerData();
    void LookAround();
    void Leave();

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

    // States
    void UntilLoaded();
    void UntilResult(const QString& text);
    void UntilToast(const QString& text);
    void UntilBox(const QString& text);
    void UntilCurrent(const QString& version);
    static QListWidget* VersionList();
    static int RowOf(const QString& name);

    Workstation* const workstation;
    TourDriver* const d;
    ToastWatcher* const toasts;
};
