// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QObject>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariantMap>

#include <memory>

class ChildProcess;

// The Python process that looks at program texts (code_helper.py, with jedi). When it ends it is started again,
// after a while that grows. What it says is not believed: lines are bounded and have to be JSON objects.
class CodeHelper : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        Off,      // not started, or ended and waiting for its next start
        Starting, // until it has loaded jedi
        Ready,
        Missing, // there is no Python, or no jedi in it
    };

    // No answer is longer.
    static constexpr int mostAnswerBytes = 2 * 1024 * 1024;

    explicit CodeHelper(QObject* parent = nullptr);
    ~CodeHelper() override;

    // Does nothing while it runs, waits for its next start or is known to be missing.
    void Start();
    State GetState() const { return state; }
    // Whether it is worth while to wait for it.
    bool MayAnswer() const;

    // One line, without its end. Only when Ready.
    void Send(const QByteArray& line);

    // For one that does not answer: ends it; SigLost follows.
    void End();

signals:
    void SigReady();
    void SigMissing();
    void SigAnswer(const QVariantMap& answer);
    // It ended by itself or by End(): what it was asked is not answered.
    void SigLost();

private:
    bool WriteFiles();
    void Launch();
    void Read();
    void TakeLine(const QByteArray& line);
    void TakeEnd();
    void BeMissing();

    QTemporaryDir folder;
    std::unique_ptr<ChildProcess> process;
    QTimer again;
    QByteArray received;
    State state = State::Off;
    int losses = 0;   // in a row
    int answered = 0; // since it was started
};
