// SPDX-License-Identifier: Apache-2.0

#include "PackageFixture.h"

#include <RpaPackage/RpaPackageModule.h>

#include <memory>

namespace
{
class OwnService : public IPackageService
{
public:
    void Install(const QString&) override {}
    void Reset(const QString&) override {}
};

RpaPackageModule* Module()
{
    return RpaPackageModule::Instance();
}
} // namespace

class PackageServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void announcesTheEndOfAnInstallationAfterTheCall();
    void finishesWhateverComesInTheWay_data();
    void finishesWhateverComesInTheWay();
    void finishesWhenItTakesTooLong();
    void finishesAtShutdownAndCanBeUsedAgain();
    void endsEveryInstallationWhenTheyAreCancelled();
    void tellsWhoWaitsForAnInstallation();
    void resettingAnnouncesNothing();
    void savingTellsTheApp();
    void refusesHostileNames_data();
    void refusesHostileNames();
    void refusesHostileVersions_data();
    void refusesHostileVersions();
    void aHostileNameNeverReachesPip();
    void countsPackagesOfTheSystemAsInstalled();
    void aReplacedServiceIsGivenUntilItIsDestroyed();
};

void PackageServiceTest::announcesTheEndOfAnInstallationAfterTheCall()
{
    QSignalSpy finished(Module()->GetService(), &IPackageService::SigInstallFinished);

    Module()->GetService()->Install(QStringLiteral("{}"));
    QCOMPARE(finished.size(), 0);
    QTRY_COMPARE(finished.size(), 1);
}

void PackageServiceTest::finishesWhateverComesInTheWay_data()
{
    QTest::addColumn<QString>("json");
    QTest::addColumn<QString>("python");
    QTest::addColumn<bool>("hasDataFolder");
    const QString list = PackageFixture::ListOf(QStringLiteral("tinywheel"));
    const QString python; // the engine's
    QTest::newRow("no text") << QString() << python << true;
    QTest::newRow("not JSON") << QStringLiteral("packages") << python << true;
    QTest::newRow("an array") << QStringLiteral("[]") << python << true;
    QTest::newRow("no Python") << list << QStringLiteral("/nowhere/python3") << true;
    QTest::newRow("a Python that fails") << list << PackageFixture::OddPython("fails") << true;
    QTest::newRow("a Python that talks nonsense") << list << PackageFixture::OddPython("echoes") << true;
    QTest::newRow("no data folder") << list << python << false;
}

void PackageServiceTest::finishesWhateverComesInTheWay()
{
    QFETCH(QString, json);
    QFETCH(QString, python);
    QFETCH(bool, hasDataFolder);
    PackageFixture f;
    PackageSettings settings = f.service.GetSettings();
    settings.python = python;
    if (!hasDataFolder)
        settings.dataFolder.clear();
    f.service.SetSettings(settings);
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy ended(&f.service, &PackageService::SigInstallationEnded);

    f.service.Install(json);
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 30000);

    QCOMPARE(ended.size(), 1);
    QVERIFY(!ended.first().first().toString().isEmpty());
    QCOMPARE(f.service.GetPendingCount(), 0);
}

void PackageServiceTest::finishesWhenItTakesTooLong()
{
    PackageFixture f;
    f.UsePython(PackageFixture::OddPython("sleeps"), std::chrono::milliseconds(200));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy ended(&f.service, &PackageService::SigInstallationEnded);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 30000);

    QCOMPARE(ended.first().first().toString(), QStringLiteral("安装扩展包超时，已停止"));
    QCOMPARE(f.StateOf(QStringLiteral("tinywheel")).status, PackageState::Failed);
}

void PackageServiceTest::finishesAtShutdownAndCanBeUsedAgain()
{
    PackageFixture f;
    f.UsePython(PackageFixture::OddPython("sleeps"));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy progress(&f.service, &PackageService::SigProgress);
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_VERIFY(!progress.isEmpty());

    f.service.Shutdown();
    QCOMPARE(finished.size(), 2);
    QCOMPARE(f.service.GetPendingCount(), 0);

    f.service.Install(QStringLiteral("{}"));
    QTRY_COMPARE(finished.size(), 3);
}

void PackageServiceTest::endsEveryInstallationWhenTheyAreCancelled()
{
    PackageFixture f;
    f.UsePython(PackageFixture::OddPython("sleeps"));
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy ended(&f.service, &PackageService::SigInstallationEnded);
    QSignalSpy progress(&f.service, &PackageService::SigProgress);
    f.service.Cancel(); // nothing
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.InstallCurrent();
    QTRY_VERIFY(!progress.isEmpty());
    QVERIFY(!f.service.IsCut());

    f.service.Cancel();
    QCOMPARE(finished.size(), 0);
    QTRY_COMPARE(ended.size(), 2);

    QCOMPARE(finished.size(), 1);
    QCOMPARE(ended.first().first().toString(), QStringLiteral("已取消安装扩展包"));
    QCOMPARE(f.service.GetPendingCount(), 0);
    QVERIFY(f.service.IsCut());
    f.service.SetApp(QStringLiteral("app-2"));
    QVERIFY(!f.service.IsCut());
    f.service.SetApp(QStringLiteral("app-1"));
    f.UsePython(PackageFixture::OddPython("fails"));
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    QTRY_COMPARE(finished.size(), 2);
    QVERIFY(!f.service.IsCut());
}

void PackageServiceTest::tellsWhoWaitsForAnInstallation()
{
    PackageFixture f;
    f.UsePython(PackageFixture::OddPython("sleeps"));
    QStringList told;
    connect(&f.service, &PackageService::SigPendingChanged, this, [&] {
        told << QStringLiteral("%1 %2").arg(f.service.GetPendingCount()).arg(f.service.IsAwaited());
    });
    connect(&f.service, &IPackageService::SigInstallFinished, this,
            [&] { told << QStringLiteral("finished"); });

    f.service.Reset(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.InstallCurrent();
    f.service.Install(PackageFixture::ListOf(QStringLiteral("tinywheel")));
    f.service.Cancel();

    QTRY_VERIFY(told.contains(QStringLiteral("finished")));
    const QStringList expected{QStringLiteral("1 0"), QStringLiteral("2 1"), QStringLiteral("0 0"),
                               QStringLiteral("0 0"), QStringLiteral("finished")};
    QCOMPARE(told, expected);
}

void PackageServiceTest::resettingAnnouncesNothing()
{
    PackageFixture f;
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy saved(&f.service, &IPackageService::SigSaveConfig);
    const QString list = PackageFixture::ListOf(QStringLiteral("openpyxl"));

    f.service.Reset(list);
    QCoreApplication::processEvents();

    QCOMPARE(f.service.GetConfiguration(), list);
    QCOMPARE(f.service.GetStates().size(), 1);
    QCOMPARE(finished.size(), 0);
    QCOMPARE(saved.size(), 0);
}

void PackageServiceTest::savingTellsTheApp()
{
    PackageFixture f;
    QSignalSpy saved(&f.service, &IPackageService::SigSaveConfig);
    const QString list = PackageFixture::ListOf(QStringLiteral("openpyxl"), QStringLiteral("3.1.2"));

    f.service.Save(list);

    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.first().first().toString(), list);
    QCOMPARE(f.StateOf(QStringLiteral("openpyxl")).version, QStringLiteral("3.1.2"));
}

void PackageServiceTest::refusesHostileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("an option") << QStringLiteral("--index-url=http://example.com");
    QTest::newRow("a short option") << QStringLiteral("-e");
    QTest::newRow("an address") << QStringLiteral("https://example.com/a.whl");
    QTest::newRow("a repository") << QStringLiteral("git+ssh://host/x");
    QTest::newRow("a direct reference") << QStringLiteral("a @ file:///etc/passwd");
    QTest::newRow("a path") << QStringLiteral("../evil");
    QTest::newRow("an absolute path") << QStringLiteral("/tmp/evil");
    QTest::newRow("a wheel file") << QStringLiteral("evil.whl");
    QTest::newRow("an archive") << QStringLiteral("evil.tar.gz");
    QTest::newRow("extras") << QStringLiteral("requests[security]");
    QTest::newRow("a marker") << QStringLiteral("requests; python_version > '3'");
    QTest::newRow("two lines") << QStringLiteral("requests\n--pre");
    QTest::newRow("a line end") << QStringLiteral("requests\n");
    QTest::newRow("full-width letters") << QStringLiteral("ｒequests");
    QTest::newRow("a full stop at the end") << QStringLiteral("requests.");
    QTest::newRow("101 letters") << QString(101, QLatin1Char('a'));
}

void PackageServiceTest::refusesHostileNames()
{
    QFETCH(QString, name);
    QVERIFY(!PackageService::NameProblem(name).isEmpty());
}

void PackageServiceTest::refusesHostileVersions_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("fits");
    QTest::newRow("any") << QString() << true;
    QTest::newRow("three numbers") << QStringLiteral("3.1.2") << true;
    QTest::newRow("a candidate") << QStringLiteral("2.0rc1") << true;
    QTest::newRow("a local one") << QStringLiteral("1.0+cpu") << true;
    QTest::newRow("an option") << QStringLiteral("--pre") << false;
    QTest::newRow("an operator") << QStringLiteral(">=1") << false;
    QTest::newRow("any after the point") << QStringLiteral("1.*") << false;
    QTest::newRow("a second requirement") << QStringLiteral("1.0 evil") << false;
    QTest::newRow("a line end") << QStringLiteral("1.0\n") << false;
    QTest::newRow("Arabic digits") << QStringLiteral("١.٢") << false;
    QTest::newRow("65 digits") << QString(65, QLatin1Char('1')) << false;
}

void PackageServiceTest::refusesHostileVersions()
{
    QFETCH(QString, version);
    QFETCH(bool, fits);
    QCOMPARE(PackageService::VersionProblem(version).isEmpty(), fits);
}

void PackageServiceTest::aHostileNameNeverReachesPip()
{
    PackageFixture f;
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    QSignalSpy output(&f.service, &PackageService::SigOutput);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("--target=/tmp/evil")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 30000);

    QCOMPARE(output.size(), 0);
    QCOMPARE(f.StateOf(QStringLiteral("--target=/tmp/evil")).status, PackageState::Failed);
    QVERIFY(f.service.GetPackageFolders().isEmpty());
}

void PackageServiceTest::countsPackagesOfTheSystemAsInstalled()
{
    PackageFixture f;
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);

    f.service.Install(PackageFixture::ListOf(QStringLiteral("openpyxl")));
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 30000);

    QCOMPARE(f.StateOf(QStringLiteral("openpyxl")).status, PackageState::Installed);
    QVERIFY(f.service.GetPackageFolders().isEmpty());
}

void PackageServiceTest::aReplacedServiceIsGivenUntilItIsDestroyed()
{
    IPackageService* const builtIn = Module()->GetService();
    auto own = std::make_unique<OwnService>();

    Module()->SetService(own.get());
    QCOMPARE(Module()->GetService(), static_cast<IPackageService*>(own.get()));
    own.reset();
    QVERIFY(!Module()->GetService());

    Module()->SetService(builtIn);
    QCOMPARE(Module()->GetService(), builtIn);
    QCOMPARE(builtIn, static_cast<IPackageService*>(Module()->GetBuiltIn()));
}

QTEST_GUILESS_MAIN(PackageServiceTest)
#include "tst_packageservice.moc"
