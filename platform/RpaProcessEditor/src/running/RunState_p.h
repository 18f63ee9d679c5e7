// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineCore/IProcessLifeCycle.h>

#include <QObject>

// What the engine does, seen from the editor of one app. A run of the app counts as the editor's own, whoever
// on the app's pages started it.
class RunState : public QObject, public IProcessLifeCycle
{
    Q_OBJECT

public:
    enum class Phase
    {
        Idle,
        Waiting, // a run that was asked for here waits for its packages
        Running,
        Paused,
        Elsewhere, // something runs or waits that is not for this editor to control
    };

    explicit RunState(QObject* parent = nullptr);
    ~RunState() override;

    // Null: none.
    void SetApp(const RpaAppDataPtr& appData);

    Phase GetPhase() const;
    // That runs or waits here; empty without one.
    QString GetProcess() const;

    // The name of the process while its run is being asked for here; empty before and afterwards.
    void SetAsking(const QString& processName);

    void RunWaits(bool waits) override;
    void RunStarted(const RpaRunStart& start) override;
    void ProcessFinish(const QString& processName) override;

signals:
    void SigChanged();
    void SigStarted();

private:
    void SetPaused(bool value);
    bool IsOwn() const;

    RpaAppDataPtr app;
    RpaRunStart started;
    QString asked;     // now, by this editor
    QString waitingOf; // the process that waits here
    bool waits = false;
    bool runs = false;
    bool paused = false;
};
