// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineCore/IProcessLifeCycle.h>

#include <QFrame>
#include <QPointer>

class WbLabel;

// Says after a run in the editor what the run wrote into the pages of the app, and lets the author keep it as
// data of the app or take it back. Shown while there is something to decide; whoever decides nothing saves
// and releases the app as it was before the run.
class ResultsBar : public QFrame, public IProcessLifeCycle
{
    Q_OBJECT

public:
    explicit ResultsBar(QWidget* parent = nullptr);
    ~ResultsBar() override;

    // Another editor, whose app has no results yet.
    void Forget();

    void ProcessStart(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;

private:
    void SlotResultsChanged(RpaAppData* changed);
    void Keep();
    void Restore();
    void Update();

    QPointer<RpaAppData> app;
    WbLabel* text = nullptr;
    bool isRunning = false;
};
