// SPDX-License-Identifier: Apache-2.0

#include "HttpClientFixture.h"
#include "TestApp.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QtTest>

#include <numeric>

using namespace HttpClientFixture;

// Each request is answered once, later, on the thread of its client.
class WbHttpClientDeliveryTest : public QObject
{
    Q_OBJECT

private slots:
    void neverAnswersInsideSend();
    void answersOnTheThreadOfTheClient();
    void answersACancelledRequestOnce();
    void ignoresCancellingWhatIsAnswered();
    void answersEverythingWhenItIsDestroyed();
    void answersWhatIsSentWhileItIsDestroyed();
    void sendsARequestOnceThoughItsConnectionWasUsedBefore_data();
    void sendsARequestOnceThoughItsConnectionWasUsedBefore();
    void doesNotCallARequestUnsentThatLeftOnAConnectionUsedBefore();
    void goesOnOnANewConnectionWhenTheServerClosedTheOneBefore();
};

void WbHttpClientDeliveryTest::neverAnswersInsideSend()
{
    WbHttpClient client;
    int answers = 0;

    client.Send(WbHttpRequest(), [&answers](const WbHttpAnswer&) { ++answers; });

    QCOMPARE(answers, 0);
    QCOMPARE(client.GetOutstandingCount(), 1);
    QTRY_COMPARE(answers, 1);
    QCOMPARE(client.GetOutstandingCount(), 0);
}

void WbHttpClientDeliveryTest::answersOnTheThreadOfTheClient()
{
    FaultServer server;
    WbHttpClient client;
    QThread* answeredOn = nullptr;

    client.Send(Get(server), [&answeredOn](const WbHttpAnswer&) { answeredOn = QThread::currentThread(); });

    QTRY_COMPARE(answeredOn, thread());
}

void WbHttpClientDeliveryTest::answersACancelledRequestOnce()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    WbHttpClient client;
    QVector<WbHttpError> errors;
    const auto id =
        client.Send(Get(server), [&errors](const WbHttpAnswer& answer) { errors.append(answer.error); });
    QTRY_COMPARE(server.GetRequestCount(), 1);

    client.Cancel(id);
    client.Cancel(id);

    QVERIFY(errors.isEmpty());
    QTRY_COMPARE(client.GetOutstandingCount(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(errors, QVector<WbHttpError>{WbHttpError::Cancelled});
}

void WbHttpClientDeliveryTest::ignoresCancellingWhatIsAnswered()
{
    FaultServer server;
    WbHttpClient client;
    int answers = 0;
    const auto id = client.Send(Get(server), [&answers](const WbHttpAnswer&) { ++answers; });
    QTRY_COMPARE(answers, 1);

    client.Cancel(id);
    client.Cancel(id + 100);
    Ask(&client, Get(server));

    QCOMPARE(answers, 1);
}

void WbHttpClientDeliveryTest::answersEverythingWhenItIsDestroyed()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    auto client = std::make_unique<WbHttpClient>();
    QVector<int> answered;
    for (int i = 0; i < 40; ++i) {
        client->Send(Get(server), [&answered, i](const WbHttpAnswer& answer) {
            QCOMPARE(answer.error, WbHttpError::Cancelled);
            answered.append(i);
        });
    }

    client.reset();

    QVector<int> expected(40);
    std::iota(expected.begin(), expected.end(), 0);
    QCOMPARE(answered, expected);
}

void WbHttpClientDeliveryTest::answersWhatIsSentWhileItIsDestroyed()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    auto client = std::make_unique<WbHttpClient>();
    WbHttpClient* raw = client.get();
    int answers = 0;
    client->Send(Get(server), [&](const WbHttpAnswer&) {
        ++answers;
        raw->Send(Get(server), [&answers](const WbHttpAnswer& answer) {
            QCOMPARE(answer.error, WbHttpError::Cancelled);
            ++answers;
        });
    });

    client.reset();

    QCOMPARE(answers, 2);
}

void WbHttpClientDeliveryTest::sendsARequestOnceThoughItsConnectionWasUsedBefore_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::newRow("read") << QByteArray("GET");
    QTest::newRow("overwrite") << QByteArray("PUT");
    QTest::newRow("delete") << QByteArray("DELETE");
}

void WbHttpClientDeliveryTest::sendsARequestOnceThoughItsConnectionWasUsedBefore()
{
    QFETCH(const QByteArray, method);
    FaultServer server;
    WbHttpClient client;
    server.Enqueue(FaultServer::Json(200, "{}"));
    QVERIFY(Ask(&client, Get(server, QStringLiteral("/first"))).IsSuccess());
    server.Enqueue(FaultServer::Failing(Fault::CloseBeforeAnswer));
    server.Enqueue(FaultServer::Json(200, "{}"));
    WbHttpRequest request = Get(server, QStringLiteral("/second"));
    request.method = method;

    const WbHttpAnswer answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::ConnectionLost);
    QCOMPARE(server.GetRequestCount(), 2);
}

void WbHttpClientDeliveryTest::doesNotCallARequestUnsentThatLeftOnAConnectionUsedBefore()
{
    // Given: a server that is gone for good when it has read the request
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost));
    int requests = 0;
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [&] {
        QTcpSocket* socket = listener.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [&, socket] {
            socket->readAll();
            if (++requests == 1) {
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
                return;
            }
            listener.close();
            socket->abort();
        });
    });
    WbHttpClient client;
    WbHttpRequest request;
    request.url = QUrl(QStringLiteral("http://127.0.0.1:%1/x").arg(listener.serverPort()));
    QVERIFY(Ask(&client, request).IsSuccess());

    const WbHttpAnswer answer = Ask(&client, request);

    QCOMPARE(requests, 2);
    QCOMPARE(answer.error, WbHttpError::ConnectionLost);
}

void WbHttpClientDeliveryTest::goesOnOnANewConnectionWhenTheServerClosedTheOneBefore()
{
    // Given: a server that announces nothing and closes each connection after one answer
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost));
    int closed = 0;
    QObject::connect(&listener, &QTcpServer::newConnection, &listener, [&] {
        QTcpSocket* socket = listener.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, [&closed] { ++closed; });
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            socket->readAll();
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
            socket->disconnectFromHost();
        });
    });
    WbHttpClient client;
    WbHttpRequest request;
    request.url = QUrl(QStringLiteral("http://127.0.0.1:%1/x").arg(listener.serverPort()));
    QVERIFY(Ask(&client, request).IsSuccess());
    QTRY_COMPARE(closed, 1);

    QVERIFY(Ask(&client, request).IsSuccess());

    QTRY_COMPARE(closed, 2);
}

RPA_TEST_MAIN(WbHttpClientDeliveryTest)

#include "tst_wbhttpclient_delivery.moc"
