// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QProcess>
#include <QTimer>
#include <QUrl>

#include <functional>

// The version server that belongs to this workstation: started, watched, started again when it dies, stopped
// at the end. The server stops by itself when its standard input closes, so it never outlives the
// workstation, however that ends.
class EmbeddedServer : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        Stopped,
        Starting,
        Ready,
        Waiting, // died; the next start is due after a pause
        Failed,  // died too often, or never could start; Start() tries again
    };
    Q_ENUM(State)

    // Makes the line for its standard input; asked once for each start.
    using MakeHandshake = std::function<QByteArray()>;

    EmbeddedServer(const QString& program, const QString& dataDir, const MakeHandshake& makeHandshake,
                   QObject* parent = nullptr);
    ~EmbeddedServer() override;

    void Start();

    // Closes its input and waits for it to end, at most 5 s; then ends it.
    void Stop();

    State GetState() const { return state; }

    // Where it listens; empty unless it is ready.
    QUrl GetAddress() const { return address; }

    // Why it is not ready, in the user's words.
    QString GetProblem() const { return problem; }

    // 0 unless it runs.
    qint64 GetProcessId() const { return process.processId(); }

signals:
    void SigStateChanged(EmbeddedServer::State state);

    // It died without being asked to; it is started again.
    void SigDied();

private:
    void SlotReadReadyLine();
    void SlotFinished();
    void SlotErrorOccurred(QProcess::ProcessError error);
    void Launch();
    void Died(const QString& reason);
    void SetState(State value);

    const QString program;
    const QString dataDir;
    const MakeHandshake makeHandshake;
    QProcess process;
    QTimer readyTimer;
    QTimer restartTimer;
    QTimer calmTimer;
    State state = State::Stopped;
    QUrl address;
    QString problem;
    int deaths = 0;
};
