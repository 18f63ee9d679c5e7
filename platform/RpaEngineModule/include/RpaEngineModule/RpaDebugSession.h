// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaDebugTypes.h>
#include <RpaEngineModule/RpaEngineModuleExport.h>

#include <QObject>

#include <memory>

class RpaRun;
struct RpaProgram;

// Debugs the runs of the engine: where they stop, how they go on, what their variables are. There is one,
// RpaEngineModule::GetDebugSession(); it lives as long as the engine and knows every run, whoever started it.
// No operation waits for the program: answers come as signals, and those to an earlier stop never come. GUI
// thread only.
class RPAENGINEMODULE_EXPORT RpaDebugSession : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        Idle, // nothing runs
        Running,
        Paused,
    };

    static constexpr int breakpointsAtMost = 10000;
    static constexpr int slowestMs = 2000; // per statement
    static constexpr int entriesPerPage = 200;

    explicit RpaDebugSession(QObject* parent = nullptr);
    ~RpaDebugSession() override;

    State GetState() const;
    // Of the present stop; number 0 when there is none.
    RpaPause GetPause() const;

    // Settings, kept from run to run; changes reach a run that is under way. Breakpoints that are disabled,
    // whose statement the run does not have, or beyond breakpointsAtMost have no effect. A breakpoint whose
    // values stay the same keeps counting its hits.
    void SetBreakpoints(const QVector<RpaBreakpoint>& breakpoints);
    void SetErrorStop(RpaErrorStop stop);
    // 0 … slowestMs; 0: at full speed.
    void SetSlowMotion(int milliseconds);
    // Expressions that are computed at each stop, see SigWatches().
    void SetWatches(const QStringList& expressions);

    // The kind of the next run; the one after it is a whole one again, and so is this one when whoever
    // prepares runs (RpaEngineModule::SetPreparation) gives it up.
    void SetNextRun(const RpaRunPlan& plan);
    // Used by the engine: the plan, which is thereby used up.
    RpaRunPlan TakeNextRun();

    // Asks a running program to stop before its next statement; a call that blocks is waited for. False when
    // nothing runs. SigPaused follows, or the end.
    bool Pause();
    // Lets a paused program go on. False when it is not paused.
    bool Resume(RpaDebugStep step);
    // Goes on until the place is reached, or a breakpoint before it. False when it is not paused or the run
    // does not have the place.
    bool RunTo(const RpaDebugPlace& place);

    // Questions about a paused program: the number that the answer will have, 0 when it is not paused. Frames
    // count from 0, the innermost. Each is answered by SigAnswer(), unless the program goes on before.
    int AskScopes(int frame);
    // What is inside, at most entriesPerPage from the first one on.
    int AskChildren(int handle, int first, int count);
    // Computes the expression in the frame. A statement is carried out and has the value None.
    int Evaluate(int frame, const QString& expression);
    // Puts a computed value into the place of one that AskChildren() gave for the handle.
    int SetValue(int frame, int handle, const RpaDebugValue& value, const QString& expression);

signals:
    void SigStarted();
    void SigPaused(const RpaPause& pause);
    void SigResumed();
    void SigAnswer(const RpaDebugAnswer& answer);
    // After SigPaused(), and when they are set during a stop, if there are expressions to watch; in their order.
    void SigWatches(const QVector<RpaDebugValue>& values);
    // A breakpoint logged its text; the line is in the log as well.
    void SigLogPoint(const RpaDebugPlace& place, const QString& text);
    // Where a breakpoint of a program text takes effect: at the first statement from its line on; 0: nowhere.
    void SigPlaced(int line, int actualLine);
    // The run ended, however it did.
    void SigEnded();

private:
    friend class RpaEngineRunner;

    // Writes into the program how it is to be debugged; nothing when it is not. False when it does not have
    // the place of the plan.
    bool Prepare(RpaProgram& program, const RpaRunPlan& plan);
    void Attach(RpaRun& run, const RpaProgram& program);
    void Detach();

    void Take(const QVariantMap& frame);
    void TakePause(const QVariantMap& frame);
    void TakeAnswer(const QVariantMap& frame);
    int Ask(QVariantMap request);
    void SendPoints();
    void SendSettings();
    void GoOn(QVariantMap request);

    class Private;
    const std::unique_ptr<Private> d;
};
