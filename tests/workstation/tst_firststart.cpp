#include "AppListPage.h"
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

RPA_TEST_MAIN(tst_FirstStart)
#include "tst_firststart.moc"
