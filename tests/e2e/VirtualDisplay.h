// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QString>

#include <memory>
#include <vector>

// A screen in memory with a window manager on it, for machines without a display. It ends with this object
// and, when the process dies, with the process.
class VirtualDisplay
{
public:
    VirtualDisplay();
    ~VirtualDisplay();

    // Whether this program can show windows without one.
    static bool HasRealOne();

    // Starts it on a display number that is free and sets DISPLAY; the window manager is at work when it
    // returns. False when one of them does not come up; GetProblem() says why.
    bool Start(int width, int height);

    QString GetName() const { return name; }
    QString GetProblem() const { return problem; }

private:
    bool StartWindowManager();

    std::vector<std::unique_ptr<QProcess>> processes; // in the order of their start
    QString name;
    QString problem;
};
