// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "ModalDriver.h"
#include "RunFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProcessData/RpaPackageInfo.h>

namespace
{
void Need(RpaPackageInfo& info, const QString& package)
{
    const auto item = QSharedPointer<PackageItem>::create();
    item->name = package;
    info.SetListPackageItemPtr(QList<QSharedPointer<PackageItem>>() << item);
}

QString ListOf(const QString& package)
{
    RpaPackageInfo info;
    Need(info, package);
    return QString::fromUtf8(info.ToJson());
}

void KeepPackageList(RpaAppData& content)
{
    content.CheckPackageInfo();
}
} // namespace

class PackagesTest : public EditorFixture
{
    Q_OBJECT

private slots:
    void installsOnceAndOnlyWhenThereAreAnyPackages()
    {
        PatientPackageService packages;
        world.AddVersion(app, QStringLiteral("用表格"), [](RpaAppData& content) {
            Run::UseExcel(content);
            KeepPackageList(content);
        });
        EditorDriver author;
        Open(author, QStringLiteral("空"), [](RpaAppData&) {});
        const CapturingInspector capturing; // no run gets further than its checks
        ToastWatcher toasts;

        Run::Start(author, mainProcess);
        QCOMPARE(packages.installed.size(), 0);
        QCOMPARE(toasts.GetCount(), 1);

        QVERIFY(author.PickVersion(QStringLiteral("用表格")));
        QTRY_COMPARE(packages.reset.size(), 2);
        Run::Start(author, mainProcess);
        QCOMPARE(packages.installed, QStringList(ListOf(QStringLiteral("openpyxl"))));

        Run::Start(author, mainProcess);
        QCOMPARE(packages.installed.size(), 1);
    }

    void anUnchangedListIsNoEdit()
    {
        EditorDriver author;
        Open(author, QStringLiteral("用表格"), [](RpaAppData& content) {
            Run::UseExcel(content);
            KeepPackageList(content);
        });
        const CapturingInspector capturing;
        ModalDriver noQuestion;

        Run::Start(author, mainProcess);

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void aChangedListIsAnEdit()
    {
        EditorDriver author;
        Open(author, QStringLiteral("用表格"), [](RpaAppData& content) { Run::UseExcel(content); });
        const CapturingInspector capturing;
        ModalDriver modals;
        modals.Then([](QWidget* box) { ModalDriver::Reject(box); });

        Run::Start(author, mainProcess);

        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Refused);
    }

    void aSavedConfigurationIsAlwaysAnEdit_data()
    {
        QTest::addColumn<QString>("package");
        QTest::newRow("the same list") << QStringLiteral("openpyxl");
        QTest::newRow("another list") << QStringLiteral("requests");
    }

    void aSavedConfigurationIsAlwaysAnEdit()
    {
        QFETCH(QString, package);
        PatientPackageService packages;
        app = world.CreateApp(1);
        EditorDriver author;
        Open(author, QStringLiteral("程序"),
             [](RpaAppData& content) { Need(*content.GetPackageInfo(), QStringLiteral("openpyxl")); });
        const QString saved = ListOf(package);

        emit packages.SigSaveConfig(saved);

        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::Resolved);
    }

    void handsEveryLoadedVersionsListToTheService()
    {
        PatientPackageService packages;
        world.AddVersion(app, QStringLiteral("用表格"), [](RpaAppData& content) {
            Run::UseExcel(content);
            KeepPackageList(content);
        });
        EditorDriver author;
        Open(author, QStringLiteral("空"), [](RpaAppData&) {});
        QTRY_COMPARE(packages.reset.size(), 1);
        QVERIFY(!packages.reset.first().contains(QStringLiteral("openpyxl")));

        QVERIFY(author.PickVersion(QStringLiteral("用表格")));
        QTRY_COMPARE(packages.reset.size(), 2);

        QCOMPARE(packages.reset.last(), ListOf(QStringLiteral("openpyxl")));
        QVERIFY(packages.installed.isEmpty());
    }

    void doesNotRunWithoutAPackageService()
    {
        EditorDriver author;
        Open(author, QStringLiteral("用表格"), [](RpaAppData& content) {
            Run::UseExcel(content);
            KeepPackageList(content);
        });
        IPackageService* const former = RpaPackageModule::Instance()->GetService();
        RpaPackageModule::Instance()->SetService(nullptr);
        const CapturingInspector capturing;
        ToastWatcher toasts;

        Run::Start(author, mainProcess);
        QCOMPARE(toasts.GetCount(), 0);
        // The one installation was tried; the next run goes on without it.
        Run::Start(author, mainProcess);
        RpaPackageModule::Instance()->SetService(former);

        QCOMPARE(toasts.GetCount(), 1);
    }

private:
    void Open(EditorDriver& author, const QString& version, const EditorWorld::Fill& fill)
    {
        world.AddVersion(app, version, [&](RpaAppData& content) {
            fill(content);
            mainProcess = Run::MainProcess(content);
        });
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), version);
    }

    QString mainProcess;
};

RPA_TEST_MAIN(PackagesTest)
#include "tst_packages.moc"
