#include "ServerProcess.h"

#include <QTest>

class LifecycleTest : public QObject
{
    Q_OBJECT

private slots:
    void stopsWhenItsInputCloses();
    void comesBackOnTheSamePort();
};

void LifecycleTest::stopsWhenItsInputCloses()
{
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());

    const bool graceful = server.Stop();

    QVERIFY2(graceful, server.Log().constData());
    QVERIFY(server.Log().contains("\"stopped\""));
}

void LifecycleTest::comesBackOnTheSamePort()
{
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());
    const quint16 port = server.Port();

    QVERIFY2(server.Restart(), server.ErrorText());

    QCOMPARE(server.Port(), port);
    QVERIFY(server.IsRunning());
}

QTEST_GUILESS_MAIN(LifecycleTest)
#include "tst_lifecycle.moc"
