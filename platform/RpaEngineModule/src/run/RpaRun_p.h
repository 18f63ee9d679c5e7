// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/RpaRunFailure.h>
#include <RpaEngineCore/RpaRunSpan.h>

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <QVector>

#include <memory>

// Where a line of a program came from; both empty for lines that belong to no statement.
struct RpaProgramOrigin
{
    QString processName;
    QString statementId;
    int line = 0; // number of the statement in its process, or the line itself where the program was written
    QString title{}; // of the statement's command, or the line's text

    RpaRunPlace ToPlace() const { return {processName, statementId, line, title}; }
};

// A program made from a process.
struct RpaProgram
{
    QString source;
    QVector<RpaProgramOrigin> originByLine; // line 1 at index 0
    QStringList packageFolders;             // searched for modules before Python's own
    bool visual = false;                    // translated from statements
    QVariantMap debug;                      // how it is to be debugged; empty: it is not

    RpaProgramOrigin GetOrigin(int line) const { return originByLine.value(line - 1); }
};

struct RpaRunOutcome
{
    bool ok = false;
    bool stopped = false; // by the user
    int line = 0;         // where it failed; 0 when that is not known
    QString error;        // in the user's words
    QString trace;        // Python's own account, for the log
    RpaRunFailure failure;
};

// One run in one child. A child may be started before its job is known, so that the first statement does not
// wait for the interpreter.
class RpaRun : public QObject
{
    Q_OBJECT

public:
    // Writes the runtime's files into a folder of its own.
    explicit RpaRun(QObject* parent = nullptr);
    ~RpaRun() override;

    // Starts the interpreter. False with a reason in Chinese.
    bool Warm(const QString& interpreter, QString* reason);
    // Whether the child has not ended by itself since.
    bool IsAlive() const;

    // Hands over the job; at once when the child is ready, else as soon as it is.
    void Begin(const RpaProgram& program);

    // Asks the program to end, kills the whole group when it has not after the grace time.
    void Stop();

    // For the debugger of the child; one that does not debug yet begins to.
    void SendDebug(const QVariantMap& frame);

    void Answer(qint64 callId, const QVariant& value);
    void Refuse(qint64 callId, const QString& reason);

signals:
    void SigLog(RpaLogLevel level, const QString& text, int line);
    // The program stands at this line since so many microseconds after it began; some times a second.
    void SigAt(int line, qint64 time);
    void SigSpans(const RpaRunSpans& spans);
    // What the debugger of the child says, as it came.
    void SigDebug(const QVariantMap& frame);
    // The text that a breakpoint logged; SigLog() told it, too.
    void SigLogPoint(const QString& text, int line);
    void SigCall(qint64 callId, const QString& name, const QVariantList& arguments);
    // Exactly once after Begin(); not when the object is destroyed before.
    void SigEnded(const RpaRunOutcome& outcome);

private:
    void TakeFrame(const QVariantMap& frame);
    void TakeLog(const QVariantList& lines);
    void TakeExit(bool crashed, const QString& output);
    void End(const RpaRunOutcome& outcome);

    class Private;
    const std::unique_ptr<Private> d;
};
