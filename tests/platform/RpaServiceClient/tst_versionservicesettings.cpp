// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <RpaServiceClient/VersionServiceSettings.h>

#include <QSet>
#include <QSignalSpy>
#include <QtTest>

using Whereabouts = VersionServiceSettings::Whereabouts;

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
    void keepsTheIdentityOfAServiceThatComesBackElsewhere();
    void changesTheIdentityWithServiceAndAccount();
};

void VersionServiceSettingsTest::init()
{
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(QUrl(QStringLiteral("http://127.0.0.1:8080/rpa")));
    settings->SetToken("secret");
    QCOMPARE(settings->GetWhereabouts(), Whereabouts::Known);
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

void VersionServiceSettingsTest::keepsTheIdentityOfAServiceThatComesBackElsewhere()
{
    auto* settings = VersionServiceSettings::Instance();
    const quint64 identity = settings->GetIdentityNumber();
    const quint64 place = settings->GetPlaceNumber();
    QSignalSpy spy(settings, &VersionServiceSettings::SigChanged);

    settings->LeaveAddress(true);
    settings->LeaveAddress(true);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(settings->GetWhereabouts(), Whereabouts::Awaited);
    const quint64 away = settings->GetPlaceNumber();
    QVERIFY(settings->ReturnAt(QUrl(QStringLiteral("http://127.0.0.1:8081")), "fresh"));

    QCOMPARE(settings->GetIdentityNumber(), identity);
    QVERIFY(away != place);
    QVERIFY(settings->GetPlaceNumber() != away);
    QCOMPARE(settings->GetWhereabouts(), Whereabouts::Known);
    QCOMPARE(settings->GetToken(), QByteArray("fresh"));
    QVERIFY(!settings->ReturnAt(QUrl(QStringLiteral("file:///tmp")), "other"));
    QCOMPARE(settings->GetToken(), QByteArray("fresh"));
}

void VersionServiceSettingsTest::changesTheIdentityWithServiceAndAccount()
{
    auto* settings = VersionServiceSettings::Instance();
    QSet<quint64> identities{settings->GetIdentityNumber()};

    settings->SetToken("of another account");
    identities.insert(settings->GetIdentityNumber());
    settings->SetBaseUrl(QUrl(QStringLiteral("http://127.0.0.1:8082")));
    identities.insert(settings->GetIdentityNumber());
    settings->AwaitAnother();
    identities.insert(settings->GetIdentityNumber());
    QVERIFY(settings->GetToken().isEmpty());
    // The same address once more, but nobody knows whether the same service.
    settings->SetBaseUrl(QUrl(QStringLiteral("http://127.0.0.1:8082")));
    identities.insert(settings->GetIdentityNumber());

    QCOMPARE(identities.size(), 5);
    QCOMPARE(settings->GetWhereabouts(), Whereabouts::Known);
}

RPA_TEST_MAIN(VersionServiceSettingsTest)
#include "tst_versionservicesettings.moc"
