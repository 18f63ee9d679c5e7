// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EmbeddedAccounts.h"
#include "EmbeddedServer.h"
#include "ServerState.h"
#include "SignInKeeper.h"

#include <RpaServiceClient/VersionServiceClient.h>

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QUrl>

struct VersionServiceAccount;

// Which server the workstation speaks to, and as whom. Tells the platform both: address and token for the
// requests, account and vendor for everybody who asks who is signed in.
class Session : public QObject
{
    Q_OBJECT

public:
    // keptFile: where a sign-in that stays is kept when no secret service takes it.
    Session(const QString& serverProgram, const QString& serverDataDir, const QString& keptFile,
            QObject* parent = nullptr);
    ~Session() override;

    // Goes to a server, leaving the one before. Nobody is signed in afterwards; with a sign-in that was kept
    // for the server somebody is as soon as it answers.
    void UseEmbedded();
    void UseRemote(const QUrl& address);

    // Certificates (PEM file) that another server's may be signed by; empty: those the system trusts alone.
    void SetCaFile(const QString& path);

    // Tries again to reach a server that could not be reached.
    void Retry();

    // Ends the embedded server, and the session unless it stays for the next start.
    void End();

    bool IsEmbedded() const { return embedded; }
    EmbeddedServer* GetEmbeddedServer() { return &server; }

    // The accounts of the embedded server, and the one that is signed in (-1: none).
    QStringList GetEmbeddedNames() const;
    int GetEmbeddedIndex() const;

    void EnterEmbedded(int index);
    // stay: keep the sign-in until somebody signs out, also over the end of the workstation.
    void SignIn(const QString& account, const QString& password, bool stay);
    void SignOut();

    bool IsSignedIn() const { return !pin.isEmpty(); }
    QString GetPin() const { return pin; }
    QString GetName() const { return name; }
    bool IsAdministrator() const { return roles.contains(QStringLiteral("administrator")); }

    ServerState GetServerState() const { return serverState; }
    QString GetServerDetail() const { return serverDetail; }

signals:
    void SigServerChanged(ServerState state, const QString& detail);
    void SigSignedIn(const QString& name);
    void SigSignedOut();
    // Sign-in was refused, with the reason in the user's words.
    void SigRefused(const QString& reason);
    // The session, also one that was kept, ended on the server's side; said once.
    void SigExpired();
    // The sign-in should stay, but could not be kept.
    void SigNotKept();
    // The embedded server died and is started again.
    void SigServerDied();

private:
    QByteArray HandshakeOfNewServer();
    void SlotEmbeddedState(EmbeddedServer::State state);
    void CheckRemote();
    void Resume();
    void SlotKept(bool isKept);
    void SlotTokenRejected();
    void EndOnServer();
    void ForgetUser();
    void SetServer(ServerState state, const QString& detail);
    void SetIdentity(const VersionServiceAccount& who, const QByteArray& token);

    SignInKeeper kept;
    QVector<EmbeddedAccount> accounts; // with the tokens of the server that runs
    EmbeddedServer server;
    VersionServiceClient client;
    QTimer checkTimer;
    bool embedded = true;
    QUrl remoteAddress;
    bool resuming = false; // a kept token waits for the server's word
    bool staying = false;  // who is signed in stays so
    QString pin;
    QString name; // of the account, as others see it
    QStringList roles;
    ServerState serverState = ServerState::Connecting;
    QString serverDetail;
};
