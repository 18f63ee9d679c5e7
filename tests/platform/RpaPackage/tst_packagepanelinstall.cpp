// SPDX-License-Identifier: Apache-2.0

#include "PanelFixture.h"

// The panel while packages are installed for real.
class PackagePanelInstallTest : public QObject
{
    Q_OBJECT

private slots:
    void installsAndShowsHowEveryPackageStands();
};

void PackagePanelInstallTest::installsAndShowsHowEveryPackageStands()
{
    PanelFixture f;
    QVERIFY(f.MakeWheel(QStringLiteral("tinywheel"), QStringLiteral("1.0"), 1));
    QSignalSpy saved(&f.service, &IPackageService::SigSaveConfig);
    QSignalSpy finished(&f.service, &IPackageService::SigInstallFinished);
    f.Type(QStringLiteral("tinywheel"));
    f.Type(QStringLiteral("no-such-package-here"));

    f.Press("buttonInstallPackages");
    QVERIFY(!f.Find<QPushButton>("buttonInstallPackages")->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(f.Find<QPushButton>("buttonInstallPackages")->isEnabled(), 60000);

    QCOMPARE(saved.size(), 1);
    QCOMPARE(finished.size(), 0);
    QCOMPARE(f.Cell(0, 2), QStringLiteral("已安装 1.0"));
    QCOMPARE(f.Cell(1, 2), QStringLiteral("安装失败"));
    QCOMPARE(f.Note(), QStringLiteral("找不到 no-such-package-here，请检查名称和版本"));
}

QTEST_MAIN(PackagePanelInstallTest)
#include "tst_packagepanelinstall.moc"
