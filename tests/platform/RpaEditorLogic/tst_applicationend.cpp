// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "NativeSocket.h"

#include <RpaServiceClient/VersionServiceSettings.h>

#include <QCoreApplication>
#include <QtTest>

// What happens to requests when the application object goes. This test makes and ends applications itself.
class ApplicationEndTest : public QObject
{
    Q_OBJECT

private slots:
    void answersWhatIsOutstandingBeforeTheApplicationIsGone();
};

void ApplicationEndTest::answersWhatIsOutstandingBeforeTheApplicationIsGone()
{
    int argc = 1;
    char name[] = "tst_applicationend";
    char* argv[] = {name, nullptr};
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    EditorLogicFixture fixture;
    // Qt's sockets, and with them the scripted server, need the application, too.
    unsigned short port = 0;
    const NativeSocket::Handle silent = NativeSocket::Listen(&port);
    VersionServiceSettings::Instance()->SetBaseUrl(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port)));
    bool hadApplication = false;
    fixture.answers.reaction = [&](const auto&) { hadApplication = QCoreApplication::instance() != nullptr; };
    fixture.Update(fixture.Record(QStringLiteral("v1"), QStringLiteral("{}")));
    fixture.Load(QStringLiteral("v1"));
    QCOMPARE(fixture.answers.Count(), 0);

    application.reset();

    QCOMPARE(fixture.answers.Count(), 2);
    QVERIFY(!fixture.answers.At(0).response->IsSuccess());
    QVERIFY(!fixture.answers.At(1).response->IsSuccess());
    QVERIFY(hadApplication);
    NativeSocket::Close(silent);
}

QTEST_APPLESS_MAIN(ApplicationEndTest)
#include "tst_applicationend.moc"
