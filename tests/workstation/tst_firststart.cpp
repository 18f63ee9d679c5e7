// SPDX-License-Identifier: Apache-2.0

#include "AppListPage.h"
#include "InvitationDialog.h"
#include "LockRemains.h"
#include "MainWindow.h"
#include "SampleInstaller.h"
#include "Session.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "Workstation.h"

#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <WbBaseUI/WbBaseDialog.h>
#include <WbBaseUI/WbToast.h>

#include <QComboBox>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

class tst_FirstStart : public QObject
{
    Q_OBJECT

private slots:
    void trustsTheCertificatesOfTheSettings();
    void doesNotLockTheListWhileTheSamplesAreMade();
    void takesNoticesAwayWhenAnotherAuthorEnters();
    void laysNoDialogOverTheInvitation_data();
    void laysNoDialogOverTheInvitation();
    void startsThoughALockFileWasLeft_data();
    void startsThoughALockFileWasLeft();
};

void tst_FirstStart::trustsTheCertificatesOfTheSettings()
{
    const TestFolder home;
    const WorkstationPaths paths = WorkstationPaths::Below(home.path());
    const QString kept = home.filePath(QStringLiteral("kept.pem"));
    const QString chosen = home.filePath(QStringLiteral("chosen.pem"));
    WorkstationSettings(paths.settingsFile).SetCaFile(kept);
    const auto* const service = VersionServiceSettings::Instance();

    Workstation workstation(paths);
    QCOMPARE(service->GetCaFile(), kept);
    workstation.GetSettings()->SetCaFile(chosen);
    QCOMPARE(service->GetCaFile(), chosen);
    workstation.GetSettings()->SetCaFile(QString());

    QCOMPARE(service->GetCaFile(), QString());
}

void tst_FirstStart::doesNotLockTheListWhileTheSamplesAreMade()
{
    const TestFolder home;
    Workstation workstation(WorkstationPaths::Below(home.path()));
    QString problem;
    QVERIFY2(workstation.Start(&problem), qPrintable(problem));
    auto* window = workstation.GetWindow();
    auto* enter = window->findChild<QPushButton*>(QStringLiteral("buttonEnter"));
    auto* list = window->findChild<AppListPage*>();
    QTRY_VERIFY_WITH_TIMEOUT(enter->isVisible() && enter->isEnabled(), 20000);

    QTest::mouseClick(enter, Qt::LeftButton);

    QVERIFY(list->isVisible());
    QVERIFY(list->isEnabled());
    auto* cards = list->findChild<QListView*>(QStringLiteral("listApps"));
    QTRY_COMPARE_WITH_TIMEOUT(cards->model()->rowCount(), SampleInstaller::ReadSamples().size(), 20000);
    QTRY_VERIFY(cards->hasFocus());

    QSignalSpy closed(&workstation, &Workstation::SigClosed);
    window->close();
    QTRY_COMPARE(closed.size(), 1);
}

void tst_FirstStart::takesNoticesAwayWhenAnotherAuthorEnters()
{
    const TestFolder home;
    Workstation workstation(WorkstationPaths::Below(home.path()));
    QString problem;
    QVERIFY2(workstation.Start(&problem), qPrintable(problem));
    auto* window = workstation.GetWindow();
    auto* enter = window->findChild<QPushButton*>(QStringLiteral("buttonEnter"));
    QTRY_VERIFY_WITH_TIMEOUT(enter->isVisible() && enter->isEnabled(), 20000);
    auto* session = workstation.GetSession();
    QSignalSpy signedIn(session, &Session::SigSignedIn);
    WbToast::Show(QStringLiteral("无法保留草稿"), ToastError);
    const QPointer<QWidget> toast = window->findChild<QWidget*>(QStringLiteral("WbToast"));
    QTest::mouseClick(enter, Qt::LeftButton);
    QTRY_VERIFY(window->findChild<AppListPage*>()->isVisible());
    QTRY_COMPARE(signedIn.size(), 1);
    QVERIFY(toast && toast->isVisible()); // it is for whoever starts the workstation

    session->EnterEmbedded(session->GetEmbeddedIndex());
    QTRY_COMPARE(signedIn.size(), 2);
    QVERIFY(toast && toast->isVisible());

    window->findChild<QPushButton*>(QStringLiteral("buttonSettings"))->click();
    auto* accounts = window->findChild<QComboBox*>(QStringLiteral("comboAccount"));
    QTRY_VERIFY(accounts->isVisible());
    accounts->setFocus();
    QTest::keyClick(accounts, Qt::Key_Down);
    QTRY_COMPARE(signedIn.size(), 3);
    QVERIFY(!toast || !toast->isVisible());
}

void tst_FirstStart::laysNoDialogOverTheInvitation_data()
{
    QTest::addColumn<bool>("invitationFirst");
    QTest::newRow("what the editor asks comes first") << false;
    QTest::newRow("the invitation comes first") << true;
}

// After a gray release the invitation is shown, and the editor may have something to ask at the same time.
void tst_FirstStart::laysNoDialogOverTheInvitation()
{
    QFETCH(const bool, invitationFirst);
    const TestFolder home;
    Workstation workstation(WorkstationPaths::Below(home.path()));
    QString problem;
    QVERIFY2(workstation.Start(&problem), qPrintable(problem));
    auto* window = workstation.GetWindow();
    auto* enter = window->findChild<QPushButton*>(QStringLiteral("buttonEnter"));
    auto* list = window->findChild<AppListPage*>();
    QTRY_VERIFY_WITH_TIMEOUT(enter->isVisible() && enter->isEnabled(), 20000);
    QTest::mouseClick(enter, Qt::LeftButton);
    auto* cards = list->findChild<QListView*>(QStringLiteral("listApps"));
    QTRY_VERIFY_WITH_TIMEOUT(cards->model()->rowCount() > 0, 20000);
    QString app;
    VersionServiceClient client;
    client.Send(ListAppsRequest{}, this, [&](const VersionServiceResult<QVector<VersionServiceApp>>& result) {
        app = result.value.first().id;
    });
    QTRY_VERIFY(!app.isEmpty());

    WbBaseDialog question(window);
    const auto invitation = [window] { return window->findChild<InvitationDialog*>(); };
    const auto release = [&] { emit RpaEditorNotify::Instance()->SigPublishFinished(app, 1, true); };
    bool isAlone = true;
    QTimer look;
    connect(&look, &QTimer::timeout, this, [&] {
        const bool isShown = invitation() && invitation()->isVisible();
        isAlone = isAlone && !(isShown && question.isVisible());
        if (invitationFirst && isShown)
            invitation()->reject();
        else if (question.isVisible() && (invitationFirst || invitation()))
            question.accept();
    });
    if (invitationFirst) {
        release();
        QTRY_VERIFY(invitation() && invitation()->isVisible());
    } else {
        QMetaObject::invokeMethod(&question, release, Qt::QueuedConnection);
    }
    look.start(1);

    QCOMPARE(question.exec(), int(QDialog::Accepted));

    look.stop();
    QVERIFY(isAlone);
    if (!invitationFirst)
        QTRY_VERIFY(invitation() && invitation()->isVisible());
    QSignalSpy closed(&workstation, &Workstation::SigClosed);
    if (invitation())
        invitation()->reject();
    window->close();
    QTRY_COMPARE(closed.size(), 1);
}

void tst_FirstStart::startsThoughALockFileWasLeft_data()
{
    LockRemains::AddRows();
}

void tst_FirstStart::startsThoughALockFileWasLeft()
{
    QFETCH(QByteArray, content);
    const TestFolder home;
    const auto paths = WorkstationPaths::Below(home.path());
    QVERIFY(paths.Create());
    QVERIFY(LockRemains::Leave(paths.dataDir + QStringLiteral("/lock"), content));
    Workstation workstation(paths);
    QString problem;

    QVERIFY2(workstation.Start(&problem), qPrintable(problem));

    Workstation second(paths);
    QVERIFY(!second.Start(&problem));
    QCOMPARE(problem, QStringLiteral("工作站已经在运行。"));
}

RPA_TEST_MAIN(tst_FirstStart)
#include "tst_firststart.moc"
