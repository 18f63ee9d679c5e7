// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

// How runs are watched: one setting for all editors, as the engine has one. It holds as long as an editor is
// open; what users run afterwards is neither slow nor does it stand still.
class RunSettings : public QObject
{
    Q_OBJECT

public:
    static RunSettings* Instance();

    void AddUser() { ++users; }
    void RemoveUser();

    int GetSlowMs() const { return slowMs; }
    void SetSlowMs(int milliseconds);
    bool GetStopsAtErrors() const { return stopsAtErrors; }
    void SetStopsAtErrors(bool stops);

signals:
    void SigChanged();

private:
    RunSettings() = default;

    int users = 0;
    int slowMs = 0;
    bool stopsAtErrors = false;
};
