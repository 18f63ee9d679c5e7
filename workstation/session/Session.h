#pragma once

#include "EmbeddedAccounts.h"
#include "EmbeddedServer.h"
#include "ServerState.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QUrl>

#include <memory>

class VersionServiceClient;

// Which server the workstation speaks to, and as whom. Tells the platform both: address and token for the
// requests, account and vendor for everybody who asks who is signed in.
class Session : public QObject
{
    Q_OBJECT

public:
    Session(const QString& serverProgram, const QString& serverDataDir, QObject* parent = nullptr);
    ~Session() override;

    // Goes to a server, leaving the one before. Nobody is signed in afterwards.
    void UseEmbedded();
    void UseRemote(const QUrl& address);

    // Tries again to reach a server that could not be reached.
    void Retry();

    // Ends the session and the embedded server.
    void End();

    bool IsEmbedded() const { return embedded; }
    EmbeddedServer* GetEmbeddedServer() { return &server; }

    // The accounts of the embedded server, and the one that is signed in (-1: none).
    QStringList GetEmbeddedNames() const;
    int GetEmbeddedIndex() const;

    void EnterEmbedded(int index);
    void SignIn(const QString& account, const QString& password);
    void SignOut();

    bool IsSignedIn() const { return !pin.isEmpty(); }
    QString GetPin() const { return pin; }
    QString GetName() const { return name; }

    ServerState GetServerState() const { return serverState; }
    QString GetServerDetail() const { return serverDetail; }

signals:
    void SigServerChanged(ServerState state, const QString& detail);
    void SigSignedIn(const QString& name);
    void SigSignedOut();
    // Sign-in was refused, with the reason in the user's words.
    void SigRefused(const QString& reason);
    // The session ended on the server's side.
    void SigExpired();
    // The embedded server died and is started again.
    void SigServerDied();

private:
    void SlotEmbeddedState(EmbeddedServer::State state);
    void CheckRemote();
    void ForgetUser();
    void SetServer(ServerState state, const QString& detail);
    void Become(const QString& newPin, const QString& newName, qint64 venderId, const QByteArray& token);

    const QVector<EmbeddedAccount> accounts;
    EmbeddedServer server;
    const std::unique_ptr<VersionServiceClient> client;
    QTimer checkTimer;
    bool embedded = true;
    QUrl remoteAddress;
    QString pin;
    QString name; // of the account, as others see it
    ServerState serverState = ServerState::Connecting;
    QString serverDetail;
};
