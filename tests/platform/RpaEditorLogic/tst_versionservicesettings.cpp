#include "TestApp.h"

#include <RpaEditorLogic/VersionServiceSettings.h>

#include <QSignalSpy>
#include <QtTest>

class VersionServiceSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void acceptsHttpAddressesOnly_data();
    void acceptsHttpAddressesOnly();
    void dropsTheTokenForAnotherServer_data();
    void dropsTheTokenForAnotherServer();
    void tellsOfChangesOnly();
};

void VersionServiceSettingsTest::init()
{
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(QUrl(QStringLiteral("http://127.0.0.1:8080/rpa")));
    settings->SetToken("secret");
}

void VersionServiceSettingsTest::acceptsHttpAddressesOnly_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("ok");

    QTest::newRow("http") << QStringLiteral("http://127.0.0.1:1") << true;
    QTest::newRow("https with a path") << QStringLiteral("https://host/rpa/") << true;
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("no host") << QStringLiteral("http://") << false;
    QTest::newRow("file") << QStringLiteral("file:///tmp") << false;
    QTest::newRow("user") << QStringLiteral("https://u:p@host") << false;
    QTest::newRow("query") << QStringLiteral("https://host/?a=b") << false;
    QTest::newRow("fragment") << QStringLiteral("https://host/#a") << false;
}

void VersionServiceSettingsTest::acceptsHttpAddressesOnly()
{
    QFETCH(const QString, address);
    QFETCH(const bool, ok);
    auto* settings = VersionServiceSettings::Instance();
    const QUrl before = settings->GetBaseUrl();

    QCOMPARE(settings->SetBaseUrl(QUrl(address)), ok);

    QCOMPARE(settings->GetBaseUrl(), ok ? QUrl(address) : before);
}

void VersionServiceSettingsTest::dropsTheTokenForAnotherServer_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("keeps");

    QTest::newRow("the same") << QStringLiteral("http://127.0.0.1:8080/rpa") << true;
    QTest::newRow("another path") << QStringLiteral("http://127.0.0.1:8080/") << true;
    QTest::newRow("another port") << QStringLiteral("http://127.0.0.1:8081/rpa") << false;
    QTest::newRow("another host") << QStringLiteral("http://localhost:8080/rpa") << false;
    QTest::newRow("another scheme") << QStringLiteral("https://127.0.0.1:8080/rpa") << false;
}

void VersionServiceSettingsTest::dropsTheTokenForAnotherServer()
{
    QFETCH(const QString, address);
    QFETCH(const bool, keeps);

    VersionServiceSettings::Instance()->SetBaseUrl(QUrl(address));

    QCOMPARE(VersionServiceSettings::Instance()->GetToken(), keeps ? QByteArray("secret") : QByteArray());
}

void VersionServiceSettingsTest::tellsOfChangesOnly()
{
    auto* settings = VersionServiceSettings::Instance();
    QSignalSpy spy(settings, &VersionServiceSettings::SigChanged);

    settings->SetToken("secret");
    settings->SetBaseUrl(settings->GetBaseUrl());
    QCOMPARE(spy.count(), 0);
    settings->SetToken("another");

    QCOMPARE(spy.count(), 1);
}

RPA_TEST_MAIN(VersionServiceSettingsTest)
#include "tst_versionservicesettings.moc"
