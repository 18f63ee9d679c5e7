// SPDX-License-Identifier: Apache-2.0

#include "PlainServer.h"
#include "RawClient.h"
#include "TestFolder.h"

#include <WbHttpModule/WbHttpClient.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTest>
#include <QUuid>

#include <csignal>
#include <optional>

namespace
{
constexpr int waitMs = 20000;

// A browser-like look at the server: one connection that stays, and the certificate that it was shown.
class Visitor
{
public:
    explicit Visitor(quint16 port)
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        socket.setSslConfiguration(configuration);
        socket.connectToHostEncrypted(QStringLiteral("127.0.0.1"), port);
        socket.waitForEncrypted(waitMs);
    }

    QString ServerName() const
    {
        return socket.peerCertificate().subjectInfo(QSslCertificate::CommonName).value(0);
    }

    int Ask()
    {
        socket.write("GET /api/v1/health HTTP/1.1\r\nHost: localhost\r\n\r\n");
        QByteArray answer;
        while (!answer.contains("\"status\"") && socket.waitForReadyRead(waitMs))
            answer += socket.readAll();
        return RawClient::StatusOf(answer);
    }

    QSslSocket socket;
};
} // namespace

// The server with a certificate of its own, and the clients that meet it.
class TlsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void servesClientsThatTrustItsCertificate();
    void isNotTrustedByOthers();
    void savesALargeAppByteForByte();
    void answersARefusedBodyBeforeItEnds();
    void saysNothingToClientsThatDoNotEncrypt();
    void takesANewCertificateOnHangUpAndDropsNobody();
    void takesANewCertificateWhenItsFilesChange();
    void keepsItsCertificateWhenTheNewOneIsOfNoUse();
    void refusesToStartWithFilesOfNoUse_data();
    void refusesToStartWithFilesOfNoUse();
    void warnsNobodyWhenItEncrypts();

private:
    QString File(const char* name) const { return folder->filePath(QString::fromLatin1(name)); }
    bool MakeCertificate(const char* name, const char* certificate, const char* key) const;
    bool Put(const char* from, const char* to) const;
    QStringList Arguments(const QString& listen) const;
    bool Start(const QString& listen = QStringLiteral("127.0.0.1:0"));
    WbHttpRequest RequestTo(const QByteArray& method, const QString& path) const;
    static WbHttpAnswer Send(const WbHttpRequest& request);
    QByteArray SignIn() const;

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<PlainServer> server;
};

void TlsTest::init()
{
    server.reset();
    folder = std::make_unique<TestFolder>();
    QVERIFY(MakeCertificate("first", "cert.pem", "key.pem"));
}

// Good for this machine, and its own authority.
bool TlsTest::MakeCertificate(const char* name, const char* certificate, const char* key) const
{
    QProcess openssl;
    openssl.start(QStringLiteral(RPA_OPENSSL_FILE),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                   QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                   QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
                   QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"),
                   QStringLiteral("/CN=%1").arg(QLatin1String(name)), QStringLiteral("-addext"),
                   QStringLiteral("subjectAltName=IP:127.0.0.1"), QStringLiteral("-out"), File(certificate),
                   QStringLiteral("-keyout"), File(key)});
    return openssl.waitForFinished(waitMs) && openssl.exitCode() == 0;
}

// Renames a file over another, as tools that renew certificates do.
bool TlsTest::Put(const char* from, const char* to) const
{
    QFile::remove(File(to));
    return QFile::rename(File(from), File(to));
}

QStringList TlsTest::Arguments(const QString& listen) const
{
    return {QStringLiteral("--data"),
            folder->path(),
            QStringLiteral("--listen"),
            listen,
            QStringLiteral("--tls-certificate"),
            File("cert.pem"),
            QStringLiteral("--tls-key"),
            File("key.pem")};
}

bool TlsTest::Start(const QString& listen)
{
    if (!PlainServer::AddAuthor(folder->path(), QStringLiteral("author"), "secret word"))
        return false;
    server = std::make_unique<PlainServer>(Arguments(listen));
    return server->WaitUntilReady();
}

WbHttpRequest TlsTest::RequestTo(const QByteArray& method, const QString& path) const
{
    WbHttpRequest request;
    request.method = method;
    request.url = QUrl(QStringLiteral("https://127.0.0.1:%1%2").arg(server->Port()).arg(path));
    request.caFile = File("cert.pem");
    return request;
}

WbHttpAnswer TlsTest::Send(const WbHttpRequest& request)
{
    WbHttpClient client;
    std::optional<WbHttpAnswer> answer;
    client.Send(request, [&answer](const WbHttpAnswer& value) { answer = value; });
    return QTest::qWaitFor([&answer] { return answer.has_value(); }, 3 * waitMs) ? *answer : WbHttpAnswer();
}

QByteArray TlsTest::SignIn() const
{
    WbHttpRequest request = RequestTo("POST", QStringLiteral("/api/v1/sessions"));
    request.hasSecretBody = true;
    request.body = R"({"account":"author","password":"secret word"})";
    return QJsonDocument::fromJson(Send(request).body)
        .object()
        .value(QLatin1String("token"))
        .toString()
        .toLatin1();
}

void TlsTest::servesClientsThatTrustItsCertificate()
{
    QVERIFY(Start());

    const WbHttpAnswer answer = Send(RequestTo("GET", QStringLiteral("/api/v1/health")));

    QVERIFY2(answer.IsSuccess(), qPrintable(answer.errorText));
    QVERIFY(!SignIn().isEmpty());
}

void TlsTest::isNotTrustedByOthers()
{
    QVERIFY(Start());
    WbHttpRequest request = RequestTo("GET", QStringLiteral("/api/v1/health"));
    request.caFile.clear();

    const WbHttpAnswer answer = Send(request);

    QCOMPARE(static_cast<int>(answer.error), static_cast<int>(WbHttpError::TlsFailed));
}

void TlsTest::savesALargeAppByteForByte()
{
    QVERIFY(Start());
    const QByteArray token = SignIn();
    const auto write = [&](const QString& path, const QByteArray& body) {
        WbHttpRequest request = RequestTo("POST", path);
        request.bearerToken = token;
        request.body = body;
        request.digestBody = true;
        request.headers = {{"Idempotency-Key", QUuid::createUuid().toByteArray()}, {"Version-Name", "v"}};
        return QJsonDocument::fromJson(Send(request).body).object().value(QLatin1String("id")).toString();
    };
    QByteArray app = R"({"uiData":{"pages":[]},"processData":{"processes":[]},"parts":[")";
    for (int i = 0; app.size() < 9000000; ++i)
        app += QByteArray::number(i) + ' ';
    app += "\"]}";

    const QString appId = write(QStringLiteral("/api/v1/apps"), R"({"name":"app","kind":0})");
    const QString id = write(QStringLiteral("/api/v1/apps/%1/versions").arg(appId), app);
    QVERIFY(!id.isEmpty());
    WbHttpRequest read = RequestTo("GET", QStringLiteral("/api/v1/versions/%1/data").arg(id));
    read.bearerToken = token;
    const WbHttpAnswer answer = Send(read);

    QVERIFY2(answer.IsSuccess(), qPrintable(answer.errorText));
    QVERIFY(answer.body == app);
}

void TlsTest::answersARefusedBodyBeforeItEnds()
{
    QVERIFY(Start());
    Visitor visitor(server->Port());
    visitor.socket.write(
        "POST /api/v1/sessions HTTP/1.1\r\nHost: localhost\r\nContent-Length: 3000000\r\n\r\n" +
        QByteArray(1000000, 'x'));

    QByteArray answer;
    while (visitor.socket.waitForReadyRead(waitMs))
        answer += visitor.socket.readAll();

    QCOMPARE(RawClient::StatusOf(answer), 413);
    QVERIFY(answer.contains("Connection: close"));
    QVERIFY(visitor.socket.state() != QAbstractSocket::ConnectedState);
}

void TlsTest::saysNothingToClientsThatDoNotEncrypt()
{
    QVERIFY(Start());
    RawClient client(server->Port());

    client.Send("GET /api/v1/health HTTP/1.1\r\nHost: localhost\r\n\r\n");

    QVERIFY(!client.Receive().contains("HTTP/1.1"));
    QVERIFY(client.WaitUntilClosed());
}

void TlsTest::takesANewCertificateOnHangUpAndDropsNobody()
{
    QVERIFY(Start());
    Visitor old(server->Port());
    QCOMPARE(old.ServerName(), QStringLiteral("first"));
    QVERIFY(MakeCertificate("second", "new-cert.pem", "new-key.pem"));
    QVERIFY(Put("new-key.pem", "key.pem") && Put("new-cert.pem", "cert.pem"));

    ::kill(static_cast<pid_t>(server->process.processId()), SIGHUP);

    QTRY_VERIFY_WITH_TIMEOUT(Visitor(server->Port()).ServerName() == QStringLiteral("second"), waitMs);
    QCOMPARE(old.Ask(), 200);
    QVERIFY(Send(RequestTo("GET", QStringLiteral("/api/v1/health"))).IsSuccess());
}

void TlsTest::takesANewCertificateWhenItsFilesChange()
{
    QVERIFY(Start());
    QVERIFY(MakeCertificate("second", "new-cert.pem", "new-key.pem"));

    // The certificate without its key is of no use yet.
    QVERIFY(Put("new-cert.pem", "cert.pem"));
    QTRY_VERIFY_WITH_TIMEOUT(server->Log().contains("certificate-refused"), waitMs);
    QCOMPARE(Visitor(server->Port()).ServerName(), QStringLiteral("first"));
    QVERIFY(Put("new-key.pem", "key.pem"));

    QTRY_VERIFY_WITH_TIMEOUT(Visitor(server->Port()).ServerName() == QStringLiteral("second"), waitMs);
}

void TlsTest::keepsItsCertificateWhenTheNewOneIsOfNoUse()
{
    QVERIFY(Start());
    QFile file(File("cert.pem"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no certificate") > 0 && file.flush());

    ::kill(static_cast<pid_t>(server->process.processId()), SIGHUP);

    QTRY_VERIFY_WITH_TIMEOUT(server->Log().contains("certificate-refused"), waitMs);
    Visitor visitor(server->Port());
    QCOMPARE(visitor.ServerName(), QStringLiteral("first"));
    QCOMPARE(visitor.Ask(), 200);
}

void TlsTest::refusesToStartWithFilesOfNoUse_data()
{
    QTest::addColumn<QByteArray>("certificate");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("no certificate") << QByteArray("missing.pem") << QByteArray("key.pem");
    QTest::newRow("no key") << QByteArray("cert.pem") << QByteArray("missing.pem");
    QTest::newRow("a key as certificate") << QByteArray("key.pem") << QByteArray("key.pem");
    QTest::newRow("another certificate's key") << QByteArray("cert.pem") << QByteArray("other-key.pem");
}

void TlsTest::refusesToStartWithFilesOfNoUse()
{
    QFETCH(QByteArray, certificate);
    QFETCH(QByteArray, key);
    QVERIFY(MakeCertificate("other", "other-cert.pem", "other-key.pem"));

    PlainServer refused({QStringLiteral("--data"), folder->path(), QStringLiteral("--listen"),
                         QStringLiteral("127.0.0.1:0"), QStringLiteral("--tls-certificate"),
                         File(certificate.constData()), QStringLiteral("--tls-key"), File(key.constData())});

    QCOMPARE(refused.ExitCode(), 1);
    QVERIFY2(refused.Log().contains("cannot-start") && refused.Log().contains(".pem"),
             refused.Log().constData());
}

void TlsTest::warnsNobodyWhenItEncrypts()
{
    QVERIFY(Start(QStringLiteral("0.0.0.0:0")));

    QTRY_VERIFY(server->Log().contains("\"listening\""));

    QVERIFY(server->Log().contains("https://"));
    QVERIFY(!server->Log().contains("not-loopback"));
}

QTEST_GUILESS_MAIN(TlsTest)
#include "tst_tls.moc"
