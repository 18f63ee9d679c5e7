// SPDX-License-Identifier: Apache-2.0

#include "AppNameDialog.h"
#include "PageFixture.h"
#include "TestApp.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(AppNameDialog::Purpose)

class tst_AppNameDialog : public PageFixture
{
    Q_OBJECT

private slots:
    void nameDialogTakesNamesOfOneToFiftyCharacters_data();
    void nameDialogTakesNamesOfOneToFiftyCharacters();
    void nameDialogWaitsForTheServerAfterReturn_data();
    void nameDialogWaitsForTheServerAfterReturn();
    void nameDialogGoesFromTheNameToTheKindByTab();
    void nameDialogStaysOpenWithTheReasonOfARefusal();
};

void tst_AppNameDialog::nameDialogTakesNamesOfOneToFiftyCharacters_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("blanks") << QStringLiteral("   ") << QString();
    QTest::newRow("one character") << QStringLiteral("a") << QStringLiteral("a");
    QTest::newRow("blanks around it") << QStringLiteral(" a b ") << QStringLiteral("a b");
    QTest::newRow("50 characters") << QString(50, QLatin1Char('x')) << QString(50, QLatin1Char('x'));
    QTest::newRow("51 characters") << QString(51, QLatin1Char('x')) << QString(50, QLatin1Char('x'));
}

void tst_AppNameDialog::nameDialogTakesNamesOfOneToFiftyCharacters()
{
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    AppNameDialog dialog(AppNameDialog::Purpose::Create, nullptr);
    dialog.show();
    QSignalSpy confirmed(&dialog, &AppNameDialog::SigConfirmed);

    QTest::keyClicks(Child<QLineEdit>(dialog, "editAppName"), typed);
    QTest::keyClick(Child<QLineEdit>(dialog, "editAppName"), Qt::Key_Return);

    QCOMPARE(confirmed.size(), taken.isEmpty() ? 0 : 1);
    QCOMPARE(dialog.GetName(), taken);
}

void tst_AppNameDialog::nameDialogWaitsForTheServerAfterReturn_data()
{
    QTest::addColumn<AppNameDialog::Purpose>("purpose");
    QTest::newRow("create") << AppNameDialog::Purpose::Create;
    QTest::newRow("rename") << AppNameDialog::Purpose::Rename;
}

void tst_AppNameDialog::nameDialogWaitsForTheServerAfterReturn()
{
    QFETCH(AppNameDialog::Purpose, purpose);
    AppNameDialog dialog(purpose, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* name = Child<QLineEdit>(dialog, "editAppName");
    QSignalSpy confirmed(&dialog, &AppNameDialog::SigConfirmed);

    QTest::keyClicks(name, QStringLiteral("a"));
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    QCOMPARE(confirmed.size(), 1);
    QVERIFY(dialog.isVisible());
    QVERIFY(name->hasFocus());
}

void tst_AppNameDialog::nameDialogGoesFromTheNameToTheKindByTab()
{
    AppNameDialog dialog(AppNameDialog::Purpose::Create, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QTest::keyClicks(Child<QLineEdit>(dialog, "editAppName"), QStringLiteral("a"));
    QTest::keyClick(Child<QLineEdit>(dialog, "editAppName"), Qt::Key_Tab);
    QVERIFY(Child<QRadioButton>(dialog, "radioVisual")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);

    QVERIFY(Child<QPushButton>(dialog, "buttonOk")->hasFocus());
}

void tst_AppNameDialog::nameDialogStaysOpenWithTheReasonOfARefusal()
{
    AppNameDialog dialog(AppNameDialog::Purpose::Rename, nullptr);
    dialog.SetName(QStringLiteral("开票"));
    dialog.show();
    Press(dialog, "buttonOk");
    QVERIFY(Child<QLineEdit>(dialog, "editAppName")->isReadOnly());

    dialog.ShowProblem(QStringLiteral("名称已被使用"));

    QVERIFY(dialog.isVisible());
    QCOMPARE(Child<QLabel>(dialog, "labelProblem")->text(), QStringLiteral("名称已被使用"));
    QVERIFY(!Child<QLineEdit>(dialog, "editAppName")->isReadOnly());
    QVERIFY(Child<QPushButton>(dialog, "buttonOk")->isEnabled());
}

RPA_TEST_MAIN(tst_AppNameDialog)

#include "tst_appnamedialog.moc"
