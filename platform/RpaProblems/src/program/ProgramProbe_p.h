// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>
#include <WbSystem/ChildProcess.h>

#include <QObject>
#include <QTimer>

#include <memory>

// Asks a Python in a child process what is wrong with a program, one program at a time. GUI thread.
class ProgramProbe : public QObject
{
    Q_OBJECT

public:
    explicit ProgramProbe(QObject* parent = nullptr);
    ~ProgramProbe() override;

    // Gives an earlier question up. SigAnswered follows, never inside this call.
    void Ask(const QString& program, const QString& processName);
    void GiveUp();

signals:
    // Nothing was found also when there is no Python, or none that answers in time.
    void SigAnswered(const QVector<RpaProblem>& problems);

private:
    void TakeOutput();
    void End(bool ok);

    std::unique_ptr<ChildProcess> process;
    QByteArray output;
    QString program;
    QString processName;
    QTimer deadline;
};
