// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "PageFixture.h"
#include "SettingsPage.h"
#include "TestApp.h"
#include "TestCertificate.h"
#include "TestFolder.h"
#include "UsageSection.h"
#include "WorkstationSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

class tst_SettingsPage : public PageFixture
{
    Q_OBJECT

private slots:
    void settingsWriteWhatIsChosen();
    void settingsFollowChangesMadeElsewhere();
    void settingsAcceptOnlyAnAddressOfAServer();
    void settingsHideAccountsOfARemoteServer();
    void settingsSignOutFromARemoteServer();
    void settingsTakeACertificateFileAndNothingElse();
    void settingsTellOfACertificateFileThatIsGone();
    void settingsStopTheUsageReports();
    void settingsOfferTheUsageCountsToAdministrators();
};

void tst_SettingsPage::settingsWriteWhatIsChosen()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();

    QTest::keyClick(Child<QComboBox>(page, "comboTheme"), Qt::Key_End);
    QTest::keyClick(Child<QComboBox>(page, "comboScale"), Qt::Key_End);
    QTest::keyClick(Child<QComboBox>(page, "comboDates"), Qt::Key_Down);

    QCOMPARE(settings.GetScale(), 200);
    QCOMPARE(settings.GetTheme(), ThemeChoice::Dark);
    QCOMPARE(settings.GetDateLanguage(), DateLanguage::Chinese);
}

void tst_SettingsPage::settingsFollowChangesMadeElsewhere()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);

    settings.SetTheme(ThemeChoice::Light);
    settings.SetDateLanguage(DateLanguage::Japanese);
    settings.SetScale(125);

    QCOMPARE(Child<QComboBox>(page, "comboScale")->currentText(), QStringLiteral("125 %"));
    QCOMPARE(Child<QComboBox>(page, "comboTheme")->currentText(), QStringLiteral("浅色"));
    QCOMPARE(Child<QComboBox>(page, "comboDates")->currentText(), QStringLiteral("日本語"));
}

void tst_SettingsPage::settingsAcceptOnlyAnAddressOfAServer()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();
    QSignalSpy used(&page, &SettingsPage::SigUseServer);
    auto* use = Child<QPushButton>(page, "buttonUseServer");
    QVERIFY(!use->isEnabled());

    Child<QRadioButton>(page, "radioRemote")->click();
    QVERIFY(!use->isEnabled());
    Child<QLineEdit>(page, "editAddress")->setText(QStringLiteral("http://rpa.example.com"));
    QVERIFY(!use->isEnabled());
    QVERIFY(Child<QLabel>(page, "labelAddressProblem")->isVisible());
    Child<QLineEdit>(page, "editAddress")->setText(QStringLiteral("https://rpa.example.com"));
    QVERIFY(use->isEnabled());
    use->click();

    QCOMPARE(used.size(), 1);
    QCOMPARE(used.first().at(0).toBool(), false);
    QCOMPARE(used.first().at(1).toUrl(), QUrl(QStringLiteral("https://rpa.example.com")));
    QVERIFY(settings.GetEmbeddedServer());
}

void tst_SettingsPage::settingsHideAccountsOfARemoteServer()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();

    QVERIFY(!Child<QWidget>(page, "sectionAccount")->isVisible());
    page.ShowAccounts({QStringLiteral("甲"), QStringLiteral("乙")}, 1);
    QVERIFY(Child<QWidget>(page, "sectionAccount")->isVisible());
    QCOMPARE(Child<QComboBox>(page, "comboAccount")->currentText(), QStringLiteral("乙"));
    page.ShowAccounts({}, -1);
    QVERIFY(!Child<QWidget>(page, "sectionAccount")->isVisible());
}

void tst_SettingsPage::settingsSignOutFromARemoteServer()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();
    QSignalSpy signedOut(&page, &SettingsPage::SigSignOut);

    page.ShowSignedIn(QStringLiteral("张三"));

    QCOMPARE(Child<QLabel>(page, "labelSignedIn")->text(), QStringLiteral("张三"));
    QVERIFY(Child<QPushButton>(page, "buttonSignOut")->isVisible());
    QVERIFY(!Child<QComboBox>(page, "comboAccount")->isVisible());
    QVERIFY(!Child<QCheckBox>(page, "checkSuperAdmin")->isVisible());
    Press(page, "buttonSignOut");
    QCOMPARE(signedOut.size(), 1);

    page.ShowSignedIn(QString());
    QVERIFY(!Child<QWidget>(page, "sectionAccount")->isVisible());
}

void tst_SettingsPage::settingsTakeACertificateFileAndNothingElse()
{
    const TestFolder folder;
    const auto write = [&folder](const QString& name, const QByteArray& content) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    };
    const QString good = folder.filePath(QStringLiteral("ca.pem"));
    const QString bad = folder.filePath(QStringLiteral("letter.pem"));
    QVERIFY(write(QStringLiteral("ca.pem"), certificate) && write(QStringLiteral("letter.pem"), "Dear sir,"));
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    settings.SetEmbeddedServer(false);
    SettingsPage page(&settings);
    page.show();
    auto* problem = Child<QLabel>(page, "labelCaProblem");
    auto* none = Child<QPushButton>(page, "buttonNoCaFile");
    QVERIFY(!none->isEnabled());
    ModalDriver modals;
    const auto choose = [&modals, &page](const QString& path) {
        modals.ThenIn<QFileDialog>([path](QFileDialog* files) {
            files->selectFile(path);
            static_cast<QDialog*>(files)->accept();
        });
        Press(page, "buttonCaFile");
    };

    choose(good);
    QCOMPARE(settings.GetCaFile(), good);
    QVERIFY(!problem->isVisible());
    choose(bad);
    QCOMPARE(settings.GetCaFile(), good);
    QVERIFY(problem->isVisible() && problem->text().contains(QStringLiteral("letter.pem")));
    QVERIFY(none->isEnabled());
    none->click();

    QCOMPARE(settings.GetCaFile(), QString());
    QCOMPARE(Child<QLineEdit>(page, "editCaFile")->text(), QString());
    QVERIFY(!problem->isVisible());
}

void tst_SettingsPage::settingsTellOfACertificateFileThatIsGone()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    settings.SetEmbeddedServer(false);
    settings.SetCaFile(folder.filePath(QStringLiteral("gone.pem")));
    SettingsPage page(&settings);
    page.show();

    QVERIFY(Child<QLabel>(page, "labelCaProblem")->isVisible());
    QVERIFY(Child<QLabel>(page, "labelCaProblem")->text().contains(QStringLiteral("gone.pem")));
}

void tst_SettingsPage::settingsStopTheUsageReports()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();
    QSignalSpy changed(&settings, &WorkstationSettings::SigUsageReportsChanged);

    Child<QCheckBox>(page, "checkUsageReports")->click();

    QCOMPARE(changed.size(), 1);
    QVERIFY(!settings.GetUsageReports());
    QVERIFY(!WorkstationSettings(folder.filePath(QStringLiteral("a.ini"))).GetUsageReports());
}

void tst_SettingsPage::settingsOfferTheUsageCountsToAdministrators()
{
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();
    QSignalSpy asked(page.GetUsageSection(), &UsageSection::SigShowCounts);
    QVERIFY(!Child<QPushButton>(page, "buttonUsageCounts")->isVisible());

    page.GetUsageSection()->ShowAdministrator(true);
    Press(page, "buttonUsageCounts");

    QCOMPARE(asked.size(), 1);
}

RPA_TEST_MAIN(tst_SettingsPage)

#include "tst_settingspage.moc"
