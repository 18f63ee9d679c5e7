// SPDX-License-Identifier: Apache-2.0

#include "PackageFixture.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

namespace
{
constexpr int longWaitMs = 60000;

bool LogHas(const QString& part)
{
    const QVector<RpaLogLine> lines =
        RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->GetLines();
    return std::any_of(lines.cbegin(), lines.cend(),
                       [&](const RpaLogLine& line) { return line.text.contains(part); });
}
} // namespace

// Installs for real, with Python and pip.
class PackageInstallTest : public QObject
{
    Q_OBJECT

private slots:
    void installsAWheelThatARunThenImports();
    void announcesFoldersAndEndBeforeTheRunGoesOn();
    void finishesWhenThePackageDoesNotExist();
    void installsTheOthersBesideOneThatDoesNotExist();
    void doesNotInstallAgainWhatIsThere();
    void replacesAnInstalledVersionByTheWantedOne();
    void answersTwoInstallationsOnceEach();
    void keepsTheAppsApart();
    void startsOverAfterAnInterruptedEnvironment();
    void staysBelowTheDataFolderWhateverTheAppIsCalled_data();
    void staysBelowTheDataFolderWhateverTheAppIsCalled();
};

void PackageInstallTest::installsAWheelThatARunThenImports()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.2.0"), 4711));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);

    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).installedVersion, QStringLiteral("1.2.0"));
    QCOMPARE(f.service.GetPackageFolders().size(), 1);
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"));
    processes.FindProcess(QStringLiteral("主流程"))
        ->SetProgramText(QStringLiteral("import tinywheel\nprint('found', tinywheel.VALUE)\n"));
    RpaEngineModule* const engine = RpaEngineModule::Instance();
    engine->SetProcessDataManager(&processes);
    engine->SetPackageFolders(f.service.GetPackageFolders());
    engine->GetTranslator()->SetTranslateStatements(false);
    QVERIFY(engine->Execute(QStringLiteral("主流程")));
    QTRY_VERIFY_WITH_TIMEOUT(LogHas(QStringLiteral("found 4711")), longWaitMs);
    QTRY_VERIFY(LogHas(QStringLiteral("运行完成")));
    engine->SetProcessDataManager(nullptr);
}

void PackageInstallTest::announcesFoldersAndEndBeforeTheRunGoesOn()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QStringList order;
    connect(&f.service, &PackageService::SigPackageFoldersChanged, this,
            [&] { order << QStringLiteral("folders %1").arg(f.service.GetPackageFolders().size()); });
    connect(&f.service, &PackageService::SigInstallationEnded, this,
            [&](const QString& problem) { order << QStringLiteral("ended ") + problem; });
    connect(&f.service, &IPackageService::SigInstallFinished, this,
            [&] { order << QStringLiteral("finished"); });
    QSignalSpy progress(&f.service, &PackageService::SigProgress);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_VERIFY_WITH_TIMEOUT(order.contains(QStringLiteral("finished")), longWaitMs);

    QCOMPARE(order, QStringList(
                        {QStringLiteral("folders 1"), QStringLiteral("ended "), QStringLiteral("finished")}));
    QVERIFY(progress.size() >= 3);
    QCOMPARE(progress.last().at(0).toInt(), progress.last().at(1).toInt());
}

void PackageInstallTest::finishesWhenThePackageDoesNotExist()
{
    PackageFixture f;
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy ended(&f.service, &PackageService::SigInstallationEnded);
    QSignalSpy output(&f.service, &PackageService::SigOutput);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("no-such-package-here")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);

    QCOMPARE(ended.size(), 1);
    QCOMPARE(ended.first().first().toString(),
             QStringLiteral("找不到 no-such-package-here，请检查名称和版本"));
    QCOMPARE(f.StateOf(QStringLiteral("no-such-package-here")).status, PackageState::Failed);
    QVERIFY(!output.isEmpty());
}

void PackageInstallTest::installsTheOthersBesideOneThatDoesNotExist()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);

    f.service.Install(PackageFixture::ListOf({PackageItem{QStringLiteral("no-such-package-here"), {}},
                                              PackageItem{QStringLiteral("tinywheel"), {}}}));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);

    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).status, PackageState::Installed);
    QCOMPARE(f.StateOf(QStringLiteral("no-such-package-here")).status, PackageState::Failed);
}

void PackageInstallTest::doesNotInstallAgainWhatIsThere()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.2.0"), 1));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);
    QSignalSpy output(&f.service, &PackageService::SigOutput);

    // The same version, spelled another way, and by another spelling of the name.
    f.service.Install(PackageFixture::ListOf(QStringLiteral("TinyWheel"), QStringLiteral("1.2")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 2, longWaitMs);

    QCOMPARE(output.size(), 0);
    QCOMPARE(f.StateOf(QStringLiteral("TinyWheel")).status, PackageState::Installed);
}

void PackageInstallTest::replacesAnInstalledVersionByTheWantedOne()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("2.0"), 2));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);
    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).installedVersion, QStringLiteral("2.0"));

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel"), QStringLiteral("1.0")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 2, longWaitMs);

    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).installedVersion, QStringLiteral("1.0"));
}

void PackageInstallTest::answersTwoInstallationsOnceEach()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy ended(&f.service, &PackageService::SigInstallationEnded);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.InstallCurrent();
    QCOMPARE(finished.size(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 3, longWaitMs);

    QCOMPARE(finished.size(), 2);
    QCOMPARE(f.service.GetPendingCount(), 0);
    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).status, PackageState::Installed);
}

void PackageInstallTest::keepsTheAppsApart()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);
    const QStringList first = f.service.GetPackageFolders();
    QCOMPARE(first.size(), 1);

    f.service.SetApp(QStringLiteral("app-2"));
    f.service.Reset(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.Refresh();

    QTRY_COMPARE(f.StateOf(QStringLiteral("tinywheel")).status, PackageState::Missing);
    QVERIFY(f.service.GetPackageFolders().isEmpty());
    f.service.SetApp(QStringLiteral("app-1"));
    QCOMPARE(f.service.GetPackageFolders(), first);
}

void PackageInstallTest::startsOverAfterAnInterruptedEnvironment()
{
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);
    const QString data = f.service.GetSettings().dataFolder;
    const QString environment =
        data + QLatin1Char('/') + QDir(data).entryList({QStringLiteral("app-1*")}).value(0);
    QVERIFY(QFile::remove(environment + QStringLiteral("/.ready")));
    QVERIFY(QFile::remove(environment + QStringLiteral("/bin/python")));
    QVERIFY(f.service.GetPackageFolders().isEmpty());

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 2, longWaitMs);

    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).status, PackageState::Installed);
}

void PackageInstallTest::staysBelowTheDataFolderWhateverTheAppIsCalled_data()
{
    QTest::addColumn<QString>("appId");
    QTest::newRow("no id") << QString();
    QTest::newRow("a way up") << QStringLiteral("../../etc");
    QTest::newRow("an option") << QStringLiteral("--target=/etc");
    QTest::newRow("Chinese") << QStringLiteral("发票应用");
    QTest::newRow("very long") << QString(5000, QLatin1Char('a'));
}

void PackageInstallTest::staysBelowTheDataFolderWhateverTheAppIsCalled()
{
    QFETCH(QString, appId);
    PackageFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    f.service.SetApp(appId);
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);

    QCOMPARE(f.service.GetPackageFolders().size(), 1);
    const QString data = f.service.GetSettings().dataFolder;
    QCOMPARE(QDir(data).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
    QVERIFY(QDir::cleanPath(f.service.GetPackageFolders().first()).startsWith(data + QLatin1Char('/')));
}

QTEST_MAIN(PackageInstallTest)
#include "tst_packageinstall.moc"
