// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaDebugSession.h>

#include <QObject>

// A debug session as the editor sees it: the engine's one, or one that plays a script. Its operations and
// signals mean what those of RpaDebugSession do.
class DebugSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // The engine's session; it lives as long as that.
    static DebugSource* Instance();

    virtual RpaDebugSession::State GetState() const = 0;
    virtual RpaPause GetPause() const = 0;
    virtual void SetBreakpoints(const QVector<RpaBreakpoint>& breakpoints) = 0;
    virtual void SetWatches(const QStringList& expressions) = 0;
    virtual int AskScopes(int frame) = 0;
    virtual int AskChildren(int handle, int first, int count) = 0;
    virtual int Evaluate(int frame, const QString& expression) = 0;
    virtual int SetValue(int frame, int handle, const RpaDebugValue& value, const QString& expression) = 0;

    bool IsPaused() const { return GetState() == RpaDebugSession::State::Paused; }

signals:
    void SigStarted();
    void SigPaused(const RpaPause& pause);
    void SigResumed();
    void SigEnded();
    void SigAnswer(const RpaDebugAnswer& answer);
    void SigWatches(const QVector<RpaDebugValue>& values);
};
