// SPDX-License-Identifier: Apache-2.0

#include "PanelFixture.h"

#include <QStackedWidget>

class PackagePanelTest : public QObject
{
    Q_OBJECT

private slots:
    void invitesToAddWhenThereIsNothing();
    void addsByReturnAndSavesThroughTheService();
    void refusesANameThatCannotBe();
    void setsTheVersionOfAPackageThatIsThere();
    void removesTheSelectedPackageWithDelete();
    void editsInPlace();
    void keepsEditsThatTheServiceDoesNotKnow();
    void showsTheListOfAnotherVersionOfTheApp();
    void theKeyboardIsBackAtTheButtonAfterTheInstallation();
};

void PackagePanelTest::invitesToAddWhenThereIsNothing()
{
    PanelFixture f;

    QCOMPARE(f.panel->findChild<QStackedWidget*>()->currentIndex(), 1);
    QVERIFY(f.panel->findChild<QWidget*>(QStringLiteral("emptyPackages"))->isVisible());
    QVERIFY(!f.Find<QPushButton>("buttonInstallPackages")->isEnabled());
    QVERIFY(!f.Find<QPushButton>("buttonSavePackages")->isEnabled());
    QVERIFY(!f.Find<QPushButton>("buttonRemovePackage")->isEnabled());
}

void PackagePanelTest::addsByReturnAndSavesThroughTheService()
{
    PanelFixture f;
    QSignalSpy saved(&f.service, &IPackageService::SigSaveConfig);

    f.Type(QStringLiteral("openpyxl"), QStringLiteral("3.1.2"));
    QCOMPARE(f.Rows(), 1);
    QVERIFY(f.panel->IsChanged());
    QCOMPARE(saved.size(), 0);
    f.Press("buttonSavePackages");

    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.first().first().toString(),
             PackageFixture::ListOf(QStringLiteral("openpyxl"), QStringLiteral("3.1.2")));
    QVERIFY(!f.panel->IsChanged());
    QVERIFY(!f.Find<QPushButton>("buttonSavePackages")->isEnabled());
}

void PackagePanelTest::refusesANameThatCannotBe()
{
    PanelFixture f;

    f.Type(QStringLiteral("--pre"));

    QCOMPARE(f.Rows(), 0);
    QCOMPARE(f.Note(), PackageService::NameProblem(QStringLiteral("--pre")));
    QCOMPARE(f.Find<QLineEdit>("editPackageName")->text(), QStringLiteral("--pre"));
    QVERIFY(!f.panel->IsChanged());
}

void PackagePanelTest::setsTheVersionOfAPackageThatIsThere()
{
    PanelFixture f(PackageFixture::ListOf(QStringLiteral("my-package")));

    f.Type(QStringLiteral("My_Package"), QStringLiteral("2.0"));

    QCOMPARE(f.Rows(), 1);
    QCOMPARE(f.Cell(0, 1), QStringLiteral("2.0"));
    QVERIFY(f.panel->IsChanged());
}

void PackagePanelTest::removesTheSelectedPackageWithDelete()
{
    PanelFixture f(PackageFixture::ListOf(
        {PackageItem{QStringLiteral("one"), {}}, PackageItem{QStringLiteral("two"), {}}}));
    f.panel->activateWindow();
    f.Table()->selectRow(0);
    f.Table()->setFocus();
    QTRY_VERIFY(f.Table()->hasFocus());

    QTest::keyClick(f.Table(), Qt::Key_Delete);

    QCOMPARE(f.Rows(), 1);
    QCOMPARE(f.Cell(0, 0), QStringLiteral("two"));
    QVERIFY(f.panel->IsChanged());
}

void PackagePanelTest::editsInPlace()
{
    PanelFixture f(PackageFixture::ListOf(
        {PackageItem{QStringLiteral("one"), {}}, PackageItem{QStringLiteral("two"), {}}}));
    QAbstractItemModel* const model = f.Table()->model();

    QVERIFY(model->setData(model->index(0, 1), QStringLiteral("1.5")));
    QVERIFY(!model->setData(model->index(1, 1), QStringLiteral(">=3")));
    QCOMPARE(f.Note(), PackageService::VersionProblem(QStringLiteral(">=3")));
    QVERIFY(!model->setData(model->index(1, 0), QStringLiteral("ONE")));

    QCOMPARE(f.Note(), QStringLiteral("列表中已有扩展包“ONE”"));
    QCOMPARE(f.Cell(0, 1), QStringLiteral("1.5"));
    QCOMPARE(f.Cell(1, 0), QStringLiteral("two"));
}

void PackagePanelTest::keepsEditsThatTheServiceDoesNotKnow()
{
    PanelFixture f(PackageFixture::ListOf(QStringLiteral("openpyxl")));
    f.Type(QStringLiteral("second"));

    f.service.Refresh();

    QTRY_VERIFY(f.Cell(0, 2).startsWith(QStringLiteral("已安装")));
    QCOMPARE(f.Rows(), 2);
    QCOMPARE(f.Cell(1, 2), QStringLiteral("未检查"));
}

void PackagePanelTest::showsTheListOfAnotherVersionOfTheApp()
{
    PanelFixture f(PackageFixture::ListOf(QStringLiteral("openpyxl")));
    f.Type(QStringLiteral("second"));

    f.service.Reset(PackageFixture::ListOf(QStringLiteral("third")));

    QCOMPARE(f.Rows(), 1);
    QCOMPARE(f.Cell(0, 0), QStringLiteral("third"));
    QVERIFY(!f.panel->IsChanged());
}

void PackagePanelTest::theKeyboardIsBackAtTheButtonAfterTheInstallation()
{
    QWidget dialog;
    QLineEdit neighbour(&dialog);
    PanelFixture f(PackageFixture::ListOf(QStringLiteral("openpyxl")));
    f.panel->setParent(&dialog);
    dialog.show();
    f.panel->show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* button = f.Find<QPushButton>("buttonInstallPackages");
    button->setFocus();

    QTest::keyClick(button, Qt::Key_Space);
    QVERIFY(!button->isEnabled());
    QVERIFY(!neighbour.hasFocus());
    QTRY_VERIFY_WITH_TIMEOUT(button->isEnabled(), 60000);

    QVERIFY(button->hasFocus());
}

QTEST_MAIN(PackagePanelTest)
#include "tst_packagepanel.moc"
