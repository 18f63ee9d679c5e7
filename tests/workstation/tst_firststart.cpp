#include "AppListPage.h"
#include "LockRemains.h"
#include "MainWindow.h"
#include "SampleInstaller.h"
#include "TestApp.h"
#include "Workstation.h"

#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class tst_FirstStart : public QObject
{
    Q_OBJECT

private slots:
    void leavesTheListAloneUntilTheSamplesAreThere();
    void startsThoughALockFileWasLeft_data();
    void startsThoughALockFileWasLeft();
};

void tst_FirstStart::leavesTheListAloneUntilTheSamplesAreThere()
{
    const QTemporaryDir home;
    Workstation workstation(WorkstationPaths::Below(home.path()));
    QString problem;
    QVERIFY2(workstation.Start(&problem), qPrintable(problem));
    auto* window = workstation.GetWindow();
    auto* enter = window->findChild<QPushButton*>(QStringLiteral("buttonEnter"));
    auto* list = window->findChild<AppListPage*>();
    QTRY_VERIFY_WITH_TIMEOUT(enter->isVisible() && enter->isEnabled(), 20000);

    QTest::mouseClick(enter, Qt::LeftButton);

    // An editor opened now would take the samples' saves for its own.
    QVERIFY(list->isVisible());
    QVERIFY(!list->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(list->isEnabled(), 20000);
    auto* cards = list->findChild<QListView*>(QStringLiteral("listApps"));
    QTRY_COMPARE(cards->model()->rowCount(), SampleInstaller::ReadSamples().size());
    QTRY_VERIFY(cards->hasFocus());

    QSignalSpy closed(&workstation, &Workstation::SigClosed);
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
    const QTemporaryDir home;
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
