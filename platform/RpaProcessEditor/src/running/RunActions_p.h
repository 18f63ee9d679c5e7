// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "LastValues_p.h"
#include "RunPlace_p.h"
#include "RunState_p.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

class QAction;
class QWidget;

// Running, stepping and stopping from a page of processes. A run is asked for by a signal, like that of a
// tool's button, and the engine is told beforehand which part of the process is meant.
class RunActions : public QObject
{
    Q_OBJECT

public:
    // page: where the keys work; it owns the actions. The place must outlive this.
    RunActions(QWidget* page, const RunPlace& runPlace);
    // A run that stands still ends: nobody could let it go on.
    ~RunActions() override;

    void SetApp(const RpaAppDataPtr& appData);

    // That begin or end at the author's place.
    QList<QAction*> GetPlaceActions() const { return {toHere, fromHere, selected}; }

    // The place has changed, or whether there is one.
    void Update();

signals:
    void SigRunAsked(const QString& processName);
    void SigStopAsked(const QString& processName);

private:
    using Act = void (RunActions::*)();

    QAction* Add(const char* name, const QString& text, const QKeySequence& key, const char* icon, Act act);
    void Enable(QAction* action, const QString& whyNot);
    QString WhyNotStart() const;
    QString WhyNotGoOn() const;
    QString WhyNotAct() const;

    void Run();
    void RunFree();
    void RunToHere();
    void RunFromHere();
    void RunSelected();
    void Pause();
    void StepOver();
    void StepInto();
    void StepOut();
    void Stop();

    void Step(RpaDebugStep step);
    void StartPart(RpaRunPlan plan);
    void Start(const RpaRunPlan& plan);

    QWidget* const host;
    const RunPlace& place;
    RunState state;
    LastValues values;
    QAction* run;
    QAction* runFree;
    QAction* toHere;
    QAction* fromHere;
    QAction* selected;
    QAction* pause;
    QAction* over;
    QAction* into;
    QAction* out;
    QAction* stop;
};
