// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TourDriver.h"

#include <QString>

#include <functional>

class ToastWatcher;

// An author's first hour without a mouse: makes an app with a condition and a table, runs it, sees it fail
// and mends it, releases it to invited users, publishes it and takes it back; in between a user tries it out.
// On a server with accounts of its own. Begins and ends at the list of apps of the embedded server.
class KeyboardHour
{
public:
    KeyboardHour(TourDriver* driver, ToastWatcher* toasts);

    // On the tour's own thread.
    void Run();

private:
    void GoToServer(const QString& address);
    void CreateApp();
    void DesignPage();
    void BuildProcess();
    void RunProcess();
    void FailAndMend();
    void SaveVersions();
    void Gray();
    void Redeem();
    void Publish();
    void TakeBack();
    void ReturnToOwnServer();

    // Goes on with Tab until that is where the keyboard is.
    void TabTo(const QString& what, const TourDriver::Finder& finder);
    // Writes anew what stands in the field that has the keyboard.
    void Rewrite(const QString& text);
    void ChooseServer(bool embedded);
    void SignIn(const QString& account, const QString& name);
    void ChangeAccount(const QString& account, const QString& name);
    void AddRecord(const char* panel, const QString& name);
    // The tool that was added last runs the process.
    void ChooseProcess();
    // Behind or in the statement that is chosen.
    void AddStatement(const QString& title, const std::function<void()>& fillIn);
    void RunUntil(const QString& line);
    void UntilToast(const QString& text);
    void UntilEditor();

    TourDriver* const d;
    ToastWatcher* const toasts;
};
