// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SecretStrike_p.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunHistory.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

// Follows the run of the engine: what it began with, its log as it grows, how it ended.
class RunRecorder : public QObject, public IProcessLifeCycle
{
    Q_OBJECT

public:
    explicit RunRecorder(QObject* parent = nullptr);
    ~RunRecorder() override;

    void Follow(IRpaLogDataSource* source, IRpaDebugger* debugger);
    void SetContext(const RpaRunHistory::Context& value) { context = value; }
    void SetKeeping(bool value) { keeps = value; }

    void RunStarted(const RpaRunStart& start) override;
    void RunSpans(const RpaRunSpans& spans) override;
    void RunFailed(const RpaRunFailure& failure) override;
    void ProcessFailed(const QString& processName, const QString& error, const QString& trace) override;
    void ProcessTerminate(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;

signals:
    // In this order for each run; lines any number of times.
    void SigBegan(const RpaRunRecord& record);
    void SigLines(const QVector<RpaLogLine>& lines);
    void SigSpans(const RpaRunSpans& spans);
    void SigFailure(const RpaRunFailure& failure);
    void SigEnded(const RpaRunRecord& record);

private:
    void TakeLines(const QVector<RpaLogLine>& lines);
    void TakeFindings(const QList<RpaCheckInfo>& findings);
    qint64 LastNumber() const;
    void HandSpansOn();

    QPointer<IRpaLogDataSource> log;
    RpaRunHistory::Context context;
    bool keeps = true;
    bool isRunning = false;
    RpaRunRecord record;
    SecretStrike strike;
    RpaRunSpans spans; // that were not handed on yet
    QTimer pause;      // between two times that spans are
    QElapsedTimer clock;
    qint64 taken = 0; // number of the last line
};
