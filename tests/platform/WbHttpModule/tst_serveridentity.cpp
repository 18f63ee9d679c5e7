// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "TestFolder.h"

#include <WbHttpModule/WbHttpClient.h>

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QtTest>

#include <optional>

using namespace std::chrono_literals;

namespace
{
// Answers every request over TLS with an empty object; keeps what it read after the handshake.
class TlsServer : public QTcpServer
{
public:
    TlsServer(const QString& certificateFile, const QString& keyFile)
    {
        QFile key(keyFile);
        const bool isOpen = key.open(QIODevice::ReadOnly);
        Q_ASSERT(isOpen);
        Q_UNUSED(isOpen)
        privateKey = QSslKey(&key, QSsl::Ec);
        certificates = QSslCertificate::fromPath(certificateFile);
        listen(QHostAddress::LocalHost);
    }

    QByteArray received;

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        socket->setLocalCertificateChain(certificates);
        socket->setPrivateKey(privateKey);
        connect(socket, &QSslSocket::readyRead, this, [this, socket] {
            received += socket->readAll();
            if (received.endsWith("\r\n\r\n"))
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
        });
        socket->startServerEncryption();
    }

private:
    QList<QSslCertificate> certificates;
    QSslKey privateKey;
};
} // namespace

// To whom the transport speaks over https.
class ServerIdentityTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void speaksToAServerThatItsAuthoritiesKnow();
    void keepsSilentTowardsAStranger();
    void keepsSilentTowardsAServerOfAnotherName();
    void keepsSilentTowardsWhatSpeaksNoTls();

private:
    bool MakeCertificate(const QString& name, const QString& subject);
    WbHttpAnswer Ask(const TlsServer& server, const QString& caFile);
    QString FileOf(const QString& name) const { return folder.filePath(name); }

    TestFolder folder;
};

bool ServerIdentityTest::MakeCertificate(const QString& name, const QString& subject)
{
    QProcess openssl;
    openssl.start(
        QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"), QStringLiteral("ec"),
         QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
         QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=test"),
         QStringLiteral("-addext"), QStringLiteral("subjectAltName=") + subject, QStringLiteral("-keyout"),
         FileOf(name + QStringLiteral(".key")), QStringLiteral("-out"),
         FileOf(name + QStringLiteral(".pem"))});
    return openssl.waitForFinished() && openssl.exitCode() == 0;
}

void ServerIdentityTest::initTestCase()
{
    QVERIFY2(MakeCertificate(QStringLiteral("own"), QStringLiteral("IP:127.0.0.1")),
             "needs the program openssl");
    QVERIFY(MakeCertificate(QStringLiteral("other"), QStringLiteral("DNS:another.example")));
}

WbHttpAnswer ServerIdentityTest::Ask(const TlsServer& server, const QString& caFile)
{
    WbHttpClient client;
    WbHttpRequest request;
    request.url = QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(server.serverPort()));
    request.bearerToken = "secret";
    request.caFile = caFile;
    request.limits.connect = 3000ms;
    request.limits.total = 4000ms;
    std::optional<WbHttpAnswer> answer;
    client.Send(request, [&answer](const WbHttpAnswer& value) { answer = value; });
    [&] { QTRY_VERIFY(answer.has_value()); }();
    return answer.value_or(WbHttpAnswer());
}

void ServerIdentityTest::speaksToAServerThatItsAuthoritiesKnow()
{
    const TlsServer server(FileOf(QStringLiteral("own.pem")), FileOf(QStringLiteral("own.key")));

    const auto answer = Ask(server, FileOf(QStringLiteral("own.pem")));

    QVERIFY2(answer.IsSuccess(), qPrintable(answer.errorText));
    QVERIFY(server.received.contains("Authorization: Bearer secret"));
}

void ServerIdentityTest::keepsSilentTowardsAStranger()
{
    const TlsServer server(FileOf(QStringLiteral("own.pem")), FileOf(QStringLiteral("own.key")));

    const auto answer = Ask(server, QString());

    QCOMPARE(int(answer.error), int(WbHttpError::TlsFailed));
    QVERIFY(server.received.isEmpty());
}

void ServerIdentityTest::keepsSilentTowardsAServerOfAnotherName()
{
    const TlsServer server(FileOf(QStringLiteral("other.pem")), FileOf(QStringLiteral("other.key")));

    const auto answer = Ask(server, FileOf(QStringLiteral("other.pem")));

    QCOMPARE(int(answer.error), int(WbHttpError::TlsFailed));
    QVERIFY(server.received.isEmpty());
}

void ServerIdentityTest::keepsSilentTowardsWhatSpeaksNoTls()
{
    // Given: a listener that greets like a plain text service
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, &server,
            [&server] { server.nextPendingConnection()->write("220 ready\r\n"); });
    WbHttpClient client;
    WbHttpRequest request;
    request.url = QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(server.serverPort()));
    std::optional<WbHttpAnswer> answer;

    client.Send(request, [&answer](const WbHttpAnswer& value) { answer = value; });

    QTRY_VERIFY(answer);
    QCOMPARE(int(answer->error), int(WbHttpError::TlsFailed));
}

RPA_TEST_MAIN(ServerIdentityTest)
#include "tst_serveridentity.moc"
