// SPDX-License-Identifier: Apache-2.0

#include "Session.h"

#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>
#include <RpaServiceClient/sessions/SignInRequest.h>
#include <RpaServiceClient/sessions/SignOutRequest.h>
#include <WbCore/WbGlobalData.h>

#include <chrono>

namespace
{
constexpr auto checkEvery = std::chrono::seconds(15);

VersionServiceSettings* Service()
{
    return VersionServiceSettings::Instance();
}
} // namespace

Session::Session(const QString& serverProgram, const QString& serverDataDir, const QString& keptFile,
                 QObject* parent)
    : QObject(parent), kept(keptFile), accounts(MakeEmbeddedAccounts()),
      server(serverProgram, serverDataDir, [this] { return HandshakeOfNewServer(); })
{
    checkTimer.setInterval(checkEvery);
    connect(&server, &EmbeddedServer::SigStateChanged, this, &Session::SlotEmbeddedState);
    connect(&server, &EmbeddedServer::SigDied, this, &Session::SigServerDied);
    connect(&checkTimer, &QTimer::timeout, this, &Session::CheckRemote);
    connect(Service(), &VersionServiceSettings::SigTokenRejected, this, &Session::SlotTokenRejected);
}

Session::~Session()
{
    // It stops, and says so, when it is destroyed: after the members that its news would be written into.
    server.disconnect(this);
}

// A token that went astray while a server died opens nothing at the next one.
QByteArray Session::HandshakeOfNewServer()
{
    accounts = MakeEmbeddedAccounts();
    return EmbeddedHandshake(accounts);
}

void Session::UseEmbedded()
{
    checkTimer.stop();
    if (!embedded)
        Service()->AwaitAnother();
    resuming = false;
    embedded = true;
    SetServer(ServerState::Connecting, QString());
    server.Start();
}

void Session::UseRemote(const QUrl& address)
{
    server.Stop();
    embedded = false;
    remoteAddress = address;
    Service()->SetBaseUrl(address);
    SetServer(ServerState::Connecting, address.toString());
    Resume();
    // The user need not wait for a secret service that is slow.
    if (!resuming)
        CheckRemote();
    checkTimer.start();
}

void Session::Resume()
{
    resuming = false;
    if (IsSignedIn())
        return;
    kept.GetToken(remoteAddress, [this, asked = remoteAddress](const QByteArray& token) {
        if (token.isEmpty() || embedded || asked != remoteAddress || IsSignedIn())
            return;
        resuming = true;
        Service()->SetToken(token);
        CheckRemote();
    });
}

void Session::SetCaFile(const QString& path)
{
    Service()->SetCaFile(path);
    if (!embedded)
        CheckRemote();
}

void Session::Retry()
{
    if (embedded)
        UseEmbedded();
    else
        UseRemote(remoteAddress);
}

void Session::End()
{
    checkTimer.stop();
    if (!staying)
        EndOnServer();
    ForgetUser();
    server.Stop();
}

QStringList Session::GetEmbeddedNames() const
{
    QStringList names;
    for (const EmbeddedAccount& account : accounts)
        names << account.name;
    return names;
}

int Session::GetEmbeddedIndex() const
{
    for (int i = 0; embedded && i < accounts.size(); ++i)
        if (accounts.at(i).pin == pin)
            return i;
    return -1;
}

void Session::EnterEmbedded(int index)
{
    if (!embedded || serverState != ServerState::Connected || index < 0 || index >= accounts.size())
        return;
    const EmbeddedAccount& account = accounts.at(index);
    SetIdentity({account.pin, account.name, QString::number(account.venderId), account.roles},
                account.token.toLatin1());
}

void Session::SlotEmbeddedState(EmbeddedServer::State state)
{
    if (!embedded)
        return;
    switch (state) {
    case EmbeddedServer::State::Ready: {
        const int index = GetEmbeddedIndex();
        Service()->ReturnAt(server.GetAddress(),
                            index < 0 ? QByteArray() : accounts.at(index).token.toLatin1());
        SetServer(ServerState::Connected, QStringLiteral("本机 %1").arg(server.GetAddress().authority()));
        break;
    }
    case EmbeddedServer::State::Starting:
    case EmbeddedServer::State::Waiting:
        Service()->LeaveAddress(true);
        SetServer(ServerState::Connecting, QString());
        break;
    case EmbeddedServer::State::Failed:
    case EmbeddedServer::State::Stopped:
        Service()->LeaveAddress(false);
        SetServer(ServerState::Broken, server.GetProblem());
        break;
    }
}

void Session::SetServer(ServerState state, const QString& detail)
{
    serverState = state;
    serverDetail = detail;
    emit SigServerChanged(state, detail);
}

void Session::SetIdentity(const VersionServiceAccount& who, const QByteArray& token)
{
    pin = who.pin;
    name = who.name;
    roles = who.roles;
    Service()->SetToken(token);
    WbGlobalData::Instance()->SetPin(pin);
    WbGlobalData::Instance()->SetVenderId(who.venderId.toLongLong());
    emit SigSignedIn(name);
}

void Session::SignIn(const QString& account, const QString& password, bool stay)
{
    const QUrl asked = remoteAddress;
    const auto enter = [this, asked, stay](const VersionServiceResult<VersionServiceSession>& result) {
        if (embedded || asked != remoteAddress)
            return; // no other server may see this token
        if (!result.success) {
            emit SigRefused(result.errorDesc);
            return;
        }
        resuming = false;
        SetIdentity(result.value.account, result.value.token);
        staying = stay;
        if (stay)
            kept.Keep(remoteAddress, result.value.token, [this](bool isKept) { SlotKept(isKept); });
        else
            kept.Forget(); // somebody else's, or from before
    };
    client.Send(SignInRequest{account, password, stay}, this, enter);
}

void Session::SlotKept(bool isKept)
{
    staying = isKept;
    if (!isKept)
        emit SigNotKept();
}

void Session::SignOut()
{
    if (IsSignedIn()) {
        kept.Forget();
        EndOnServer();
        ForgetUser();
        emit SigSignedOut();
    }
}

// The embedded server's tokens live as long as the workstation; a remote session is ended where it lives.
void Session::EndOnServer()
{
    if (IsSignedIn() && !embedded)
        client.Send(SignOutRequest{}, nullptr, [](const VersionServiceResult<VersionServiceNothing>&) {});
}

void Session::SlotTokenRejected()
{
    if (embedded || (!IsSignedIn() && !resuming))
        return;
    kept.Forget();
    resuming = false;
    staying = false;
    Service()->SetToken(QByteArray()); // or every further request would meet the same refusal
    emit SigExpired();
}

void Session::ForgetUser()
{
    resuming = false;
    staying = false;
    pin.clear();
    name.clear();
    roles.clear();
    Service()->SetToken(QByteArray());
    WbGlobalData::Instance()->SetPin(QString());
    WbGlobalData::Instance()->SetVenderId(0);
}

void Session::CheckRemote()
{
    const QUrl asked = remoteAddress;
    client.Send(GetCurrentSessionRequest{}, this,
                [this, asked](const VersionServiceResult<VersionServiceSession>& result) {
                    if (embedded || asked != remoteAddress)
                        return;
                    // A refusal is an answer of the service too: it is there, it only does not know us yet.
                    const bool reached = result.success || !result.errorCode.isEmpty();
                    const ServerState state = reached ? ServerState::Connected : ServerState::Broken;
                    const QString detail = reached ? remoteAddress.toString() : result.errorDesc;
                    if (state != serverState || detail != serverDetail)
                        SetServer(state, detail);
                    if (resuming && result.success) {
                        resuming = false;
                        staying = true;
                        SetIdentity(result.value.account, Service()->GetToken());
                    }
                });
}
