#include "Session.h"

#include <RpaEditorLogic/VersionServiceClient.h>
#include <RpaEditorLogic/VersionServiceSettings.h>
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

Session::Session(const QString& serverProgram, const QString& serverDataDir, QObject* parent)
    : QObject(parent), accounts(MakeEmbeddedAccounts()),
      server(serverProgram, serverDataDir, EmbeddedHandshake(accounts)),
      client(std::make_unique<VersionServiceClient>())
{
    checkTimer.setInterval(checkEvery);
    connect(&server, &EmbeddedServer::SigStateChanged, this, &Session::SlotEmbeddedState);
    connect(&server, &EmbeddedServer::SigDied, this, &Session::SigServerDied);
    connect(&checkTimer, &QTimer::timeout, this, &Session::CheckRemote);
    connect(Service(), &VersionServiceSettings::SigTokenRejected, this, [this] {
        if (IsSignedIn() && !embedded) {
            emit SigExpired();
        }
    });
}

Session::~Session()
{
    // It stops, and says so, when it is destroyed: after the members that its news would be written into.
    server.disconnect(this);
}

void Session::UseEmbedded()
{
    checkTimer.stop();
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
    CheckRemote();
    checkTimer.start();
}

void Session::Retry()
{
    if (embedded) {
        UseEmbedded();
    } else {
        UseRemote(remoteAddress);
    }
}

void Session::End()
{
    checkTimer.stop();
    ForgetUser();
    server.Stop();
}

QStringList Session::GetEmbeddedNames() const
{
    QStringList names;
    for (const EmbeddedAccount& account : accounts) {
        names << account.name;
    }
    return names;
}

int Session::GetEmbeddedIndex() const
{
    for (int i = 0; embedded && i < accounts.size(); ++i) {
        if (accounts.at(i).pin == pin) {
            return i;
        }
    }
    return -1;
}

void Session::EnterEmbedded(int index)
{
    if (!embedded || serverState != ServerState::Connected || index < 0 || index >= accounts.size()) {
        return;
    }
    const EmbeddedAccount& account = accounts.at(index);
    Become(account.pin, account.name, account.venderId, account.token.toLatin1());
}

void Session::SlotEmbeddedState(EmbeddedServer::State state)
{
    if (!embedded) {
        return;
    }
    switch (state) {
    case EmbeddedServer::State::Ready:
        // A server that was started again listens elsewhere; the new address drops the token, which is still
        // good.
        Service()->SetBaseUrl(server.GetAddress());
        if (GetEmbeddedIndex() >= 0) {
            Service()->SetToken(accounts.at(GetEmbeddedIndex()).token.toLatin1());
        }
        SetServer(ServerState::Connected, QStringLiteral("本机 %1").arg(server.GetAddress().authority()));
        break;
    case EmbeddedServer::State::Starting:
    case EmbeddedServer::State::Waiting:
        SetServer(ServerState::Connecting, QString());
        break;
    case EmbeddedServer::State::Failed:
    case EmbeddedServer::State::Stopped:
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

void Session::Become(const QString& newPin, const QString& newName, qint64 venderId, const QByteArray& token)
{
    pin = newPin;
    name = newName;
    Service()->SetToken(token);
    WbGlobalData::Instance()->SetPin(pin);
    WbGlobalData::Instance()->SetVenderId(venderId);
    emit SigSignedIn(name);
}

void Session::SignIn(const QString& account, const QString& password)
{
    client->SignIn(account, password, this,
                   [this](const VersionServiceResult<VersionServiceSession>& result) {
                       if (!result.success) {
                           emit SigRefused(result.errorDesc);
                           return;
                       }
                       const VersionServiceAccount& who = result.value.account;
                       Become(who.pin, who.name, who.venderId.toLongLong(), result.value.token);
                   });
}

void Session::SignOut()
{
    if (IsSignedIn()) {
        ForgetUser();
        emit SigSignedOut();
    }
}

void Session::ForgetUser()
{
    // The embedded server's tokens live as long as the workstation; a remote session is ended where it lives.
    if (IsSignedIn() && !embedded) {
        client->SignOut(nullptr, [](const VersionServiceResult<VersionServiceNothing>&) {});
    }
    pin.clear();
    name.clear();
    Service()->SetToken(QByteArray());
    WbGlobalData::Instance()->SetPin(QString());
    WbGlobalData::Instance()->SetVenderId(0);
}

void Session::CheckRemote()
{
    const QUrl asked = remoteAddress;
    client->GetCurrentSession(this, [this, asked](const VersionServiceResult<VersionServiceSession>& result) {
        if (embedded || asked != remoteAddress) {
            return;
        }
        // A refusal is an answer of the service too: it is there, it only does not know us yet.
        const bool reached = result.success || !result.errorCode.isEmpty();
        const ServerState state = reached ? ServerState::Connected : ServerState::Broken;
        const QString detail = reached ? remoteAddress.toString() : result.errorDesc;
        if (state != serverState || detail != serverDetail) {
            SetServer(state, detail);
        }
    });
}
