// SPDX-License-Identifier: Apache-2.0

#include "ServerProcess.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>
#include <QUuid>

namespace
{
constexpr int startMs = 20000;
constexpr int stopMs = 20000;

QJsonObject AccountOf(const QString& pin, const QString& name, const QString& venderId,
                      const QStringList& roles)
{
    return {{QStringLiteral("pin"), pin},
            {QStringLiteral("name"), name},
            {QStringLiteral("venderId"), venderId},
            {QStringLiteral("roles"), QJsonArray::fromStringList(roles)}};
}
} // namespace

ServerProcess::ServerProcess()
{
    process.setProgram(QStringLiteral(RPA_VERSION_SERVER_FILE));
    process.setProcessChannelMode(QProcess::SeparateChannels);
}

ServerProcess::~ServerProcess()
{
    Kill();
}

bool ServerProcess::Start()
{
    log.clear();
    process.setArguments({QStringLiteral("--embedded"), QStringLiteral("--data"), folder.path(),
                          QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(port)});
    process.start();
    if (!process.waitForStarted(startMs)) {
        errorText = process.errorString().toUtf8();
        return false;
    }
    process.write(EmbeddingLine());
    return WaitUntilReady();
}

bool ServerProcess::WaitUntilReady()
{
    QElapsedTimer elapsed;
    elapsed.start();
    process.setReadChannel(QProcess::StandardOutput);
    while (!process.canReadLine()) {
        const int left = startMs - static_cast<int>(elapsed.elapsed());
        if (left <= 0 || !process.waitForReadyRead(left)) {
            errorText = "the server did not become ready: " + Log();
            return false;
        }
    }
    const QJsonObject ready = QJsonDocument::fromJson(process.readLine()).object();
    port = static_cast<quint16>(QUrl(ready.value(QLatin1String("listening")).toString()).port(0));
    errorText = port ? QByteArray() : QByteArrayLiteral("the server's ready line was not understood");
    return port != 0;
}

bool ServerProcess::Stop()
{
    if (!IsRunning())
        return false;
    process.closeWriteChannel();
    return process.waitForFinished(stopMs) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

void ServerProcess::Kill()
{
    if (!IsRunning())
        return;
    process.kill();
    process.waitForFinished(stopMs);
}

bool ServerProcess::Restart()
{
    if (IsRunning())
        Stop();
    Kill();
    return Start();
}

bool ServerProcess::IsRunning() const
{
    return process.state() != QProcess::NotRunning;
}

qint64 ServerProcess::ProcessId() const
{
    return process.processId();
}

QString ServerProcess::BaseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(port);
}

quint16 ServerProcess::Port() const
{
    return port;
}

QByteArray ServerProcess::Token(const QString& pin) const
{
    // The same after a restart, so that a client under test need not sign in again.
    return QCryptographicHash::hash((folder.path() + pin).toUtf8(), QCryptographicHash::Sha256).toHex();
}

QString ServerProcess::DataDir() const
{
    return folder.path();
}

QByteArray ServerProcess::Log()
{
    log += process.readAllStandardError();
    return log;
}

const char* ServerProcess::ErrorText() const
{
    return errorText.constData();
}

QByteArray ServerProcess::EmbeddingLine() const
{
    const QString author = QStringLiteral("author");
    const QJsonObject first = AccountOf(QStringLiteral("author-1"), QStringLiteral("作者一"),
                                        QStringLiteral("vender-a"), {author, QStringLiteral("user")});
    const QList<QJsonObject> others = {
        AccountOf(QStringLiteral("author-2"), QStringLiteral("作者二"), QStringLiteral("vender-a"), {author}),
        AccountOf(QStringLiteral("author-3"), QStringLiteral("作者三"), QStringLiteral("vender-b"), {author}),
        AccountOf(QStringLiteral("user-1"), QStringLiteral("使用者一"), QStringLiteral("vender-a"),
                  {QStringLiteral("user")}),
        AccountOf(QStringLiteral("admin-1"), QStringLiteral("管理员一"), QStringLiteral("vender-a"),
                  {QStringLiteral("administrator")}),
    };
    const auto entryOf = [this](const QJsonObject& account) {
        const QString pin = account.value(QLatin1String("pin")).toString();
        return QJsonObject{{QStringLiteral("token"), QString::fromLatin1(Token(pin))},
                           {QStringLiteral("account"), account}};
    };
    QJsonArray entries;
    for (const QJsonObject& account : others)
        entries.append(entryOf(account));
    QJsonObject line = entryOf(first);
    line.insert(QStringLiteral("others"), entries);
    return QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
}
