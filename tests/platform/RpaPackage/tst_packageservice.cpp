#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>

#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {
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
    void announcesTheEndOfAnInstallationAfterTheCall()
    {
        QSignalSpy finished(Module()->GetService(), &IPackageService::SigInstallFinished);

        Module()->GetService()->Install(QStringLiteral("{}"));
        QCOMPARE(finished.size(), 0);
        QTRY_COMPARE(finished.size(), 1);
    }

    void resettingAnnouncesNothing()
    {
        QSignalSpy finished(Module()->GetService(), &IPackageService::SigInstallFinished);
        QSignalSpy saved(Module()->GetService(), &IPackageService::SigSaveConfig);

        Module()->GetService()->Reset(QStringLiteral("{}"));
        QCoreApplication::processEvents();

        QCOMPARE(finished.size(), 0);
        QCOMPARE(saved.size(), 0);
    }

    void aReplacedServiceIsGivenUntilItIsDestroyed()
    {
        IPackageService* const builtIn = Module()->GetService();
        auto own = std::make_unique<OwnService>();

        Module()->SetService(own.get());
        QCOMPARE(Module()->GetService(), static_cast<IPackageService*>(own.get()));
        own.reset();
        QVERIFY(!Module()->GetService());

        Module()->SetService(builtIn);
        QCOMPARE(Module()->GetService(), builtIn);
    }
};

QTEST_GUILESS_MAIN(PackageServiceTest)
#include "tst_packageservice.moc"
