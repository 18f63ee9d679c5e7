// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"
#include "Workstation.h"

#include <QTest>

#include <memory>

class MainWindow;

// A whole workstation with its own server, used by the keyboard alone: every key goes to the window that the
// window system would give it to. Whatever does not come about fails the running test.
class LivingWorkstation
{
public:
    LivingWorkstation();
    ~LivingWorkstation();

    // Starts it and signs in. False when that failed.
    bool Start();
    // Ends it as closing its window does.
    void End();

    // An app of that name is made, opened, and its version is there to be edited.
    bool CreateApp(const QString& name);

    // Adds a statement with this command to the process that is shown; it is selected then.
    bool AddStatement(const QString& title);

    MainWindow* Window() const;
    Workstation* Station() const { return workstation.get(); }

    // A visible widget of that name, wherever it is; null when there is none.
    static QWidget* Shown(const char* name);
    template <typename Widget>
    static Widget* ShownAs(const char* name)
    {
        return qobject_cast<Widget*>(Shown(name));
    }

    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // What an input method or the keys write where the keyboard is.
    static void Write(const QString& text);
    // Goes on with Tab until the widget of that name has the keyboard.
    static bool TabTo(const char* name);
    static bool HasFocus(const char* name);

private:
    TestFolder home;
    std::unique_ptr<Workstation> workstation;
};
