// SPDX-License-Identifier: Apache-2.0

#include "EditorDriver.h"
#include "EditorWorld.h"
#include "PackagePreparation.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

// An app whose one tool runs a process that works with Excel, so that its first run needs a package.
void UseExcel(RpaAppData& app)
{
    RpaStatement statement;
    statement.command = QStringLiteral("excel.create");
    statement.output = QStringLiteral("工作簿");
    app.GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {statement});
    app.CheckPackageInfo();
    const auto item = QSharedPointer<PackageItem>::create();
    item->name = QStringLiteral("no-such-package-anywhere");
    app.GetPackageInfo()->SetListPackageItemPtr({item});
    app.GetUIDataManager()->GetUIData(0)->GetToolData()->InsertItem(
        0, {QString(),
            QStringLiteral("导出"),
            QString(),
            app.GetProcessDataManager()->GetProcessNameFirst(),
            {}});
}

QStringList Log()
{
    QStringList texts;
    const auto lines = RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->GetLines();
    for (const RpaLogLine& line : lines)
        texts << line.text;
    return texts;
}

bool LogHas(const QString& part)
{
    return !Log().filter(part).isEmpty();
}
} // namespace

// The author presses a tool whose packages are not there yet, and the installation takes its time.
class tst_RunPreparation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void saysThatARunWaitsForItsPackages();
    void doesNotStartWithoutThemOnASecondPress();
    void startsNothingByItselfAfterAStop();
    void goesOnInstallingWhenARunIsAskedForAfterAStop();

private:
    QPushButton* Tool() const { return author->Find<QPushButton>("toolButton0"); }
    void Press() const { QTest::mouseClick(Tool(), Qt::LeftButton); }
    static PackageService* Packages() { return RpaPackageModule::Instance()->GetBuiltIn(); }

    EditorWorld world;
    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<PackagePreparation> preparation;
    std::unique_ptr<EditorDriver> author;
};

void tst_RunPreparation::initTestCase()
{
    world.Start();
}

void tst_RunPreparation::init()
{
    folder = std::make_unique<TestFolder>();
    PackageSettings settings;
    settings.dataFolder = folder->filePath(QStringLiteral("packages"));
    settings.python = QStringLiteral(SLEEPING_PYTHON);
    Packages()->SetSettings(settings);
    preparation = std::make_unique<PackagePreparation>(Packages());
    RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->Initialize();
    world.SignIn();
    const RobotExecuteInfo app = world.CreateApp();
    Packages()->SetApp(app.GetAppId());
    world.AddVersion(app, QStringLiteral("用表格"), &UseExcel);
    author = std::make_unique<EditorDriver>();
    author->GetEditor()->SetExecuteInfo(app);
    QTRY_VERIFY_WITH_TIMEOUT(author->GetEditor()->findChild<QPushButton*>(QStringLiteral("toolButton0")),
                             longWaitMs);
}

void tst_RunPreparation::cleanup()
{
    author.reset();
    Packages()->Shutdown();
    preparation.reset();
}

void tst_RunPreparation::saysThatARunWaitsForItsPackages()
{
    ToastWatcher toasts;

    Press();

    QCOMPARE(Tool()->text(), QStringLiteral("停止"));
    QVERIFY(Tool()->isEnabled());
    QVERIFY(!author->Find("version_combo")->isEnabled());
    QTRY_COMPARE(toasts.GetCount(), 1); // once it is clear that it takes a while
    QVERIFY2(toasts.GetTexts().first().contains(QStringLiteral("扩展包")),
             qPrintable(toasts.GetTexts().first()));
    QTRY_VERIFY2(LogHas(QStringLiteral("扩展包")), qPrintable(Log().join(QLatin1Char('\n'))));
}

void tst_RunPreparation::doesNotStartWithoutThemOnASecondPress()
{
    QSignalSpy finished(Packages(), &IPackageService::SigInstallFinished);
    Press();

    Press();

    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, longWaitMs);
    QVERIFY2(!LogHas(QStringLiteral("开始运行流程")), qPrintable(Log().join(QLatin1Char('\n'))));
    QCOMPARE(Tool()->text(), QStringLiteral("导出"));
    QVERIFY(author->Find("version_combo")->isEnabled());
}

void tst_RunPreparation::startsNothingByItselfAfterAStop()
{
    QSignalSpy finished(Packages(), &IPackageService::SigInstallFinished);
    QSignalSpy progress(Packages(), &PackageService::SigProgress);
    Press();
    QTRY_VERIFY(!progress.isEmpty());
    ToastWatcher toasts;

    Press();

    QTRY_COMPARE(finished.size(), 1);
    // A slow machine may have come to the notice of the wait before.
    QTRY_VERIFY2(toasts.GetTexts().value(toasts.GetCount() - 1).contains(QStringLiteral("没有运行")),
                 qPrintable(toasts.GetTexts().join(QLatin1Char('|'))));
    QVERIFY(!LogHas(QStringLiteral("开始运行流程")));
    QCOMPARE(Packages()->GetPendingCount(), 0);
}

void tst_RunPreparation::goesOnInstallingWhenARunIsAskedForAfterAStop()
{
    QSignalSpy finished(Packages(), &IPackageService::SigInstallFinished);
    Press();
    Press();
    QTRY_COMPARE(finished.size(), 1);

    Press();

    QVERIFY(!LogHas(QStringLiteral("开始运行流程")));
    QVERIFY2(LogHas(QStringLiteral("完成后请再次运行")), qPrintable(Log().join(QLatin1Char('\n'))));
    QCOMPARE(Packages()->GetPendingCount(), 1);
}

RPA_TEST_MAIN(tst_RunPreparation)
#include "tst_runpreparation.moc"
