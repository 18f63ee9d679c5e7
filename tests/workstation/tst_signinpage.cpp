// SPDX-License-Identifier: Apache-2.0

#include "PageFixture.h"
#include "SignInPage.h"
#include "TestApp.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

class tst_SignInPage : public PageFixture
{
    Q_OBJECT

private slots:
    void signInWaitsUntilTheServerIsReady();
    void signInEntersWithTheChosenAccount();
    void signInAsksForAccountAndPasswordOfAServer();
    void signInOffersToStay();
    void signInForgetsThePasswordOnceItIsHandedOver();
    void signInForgetsTheRefusalWithTheNextAttempt();
    void signInForgetsARefusalWhenItAsksAgain_data();
    void signInForgetsARefusalWhenItAsksAgain();
    void signInOffersToTryAgainWhenTheServerIsGone();
};

void tst_SignInPage::signInWaitsUntilTheServerIsReady()
{
    SignInPage page;
    page.AskEmbedded({QStringLiteral("甲"), QStringLiteral("乙")}, 0);
    page.ShowBusy(QStringLiteral("正在连接版本服务…"));

    QVERIFY(!Child<QPushButton>(page, "buttonEnter")->isEnabled());
    QCOMPARE(Child<QLabel>(page, "labelState")->text(), QStringLiteral("正在连接版本服务…"));

    page.ShowReady();

    QVERIFY(Child<QPushButton>(page, "buttonEnter")->isEnabled());
}

void tst_SignInPage::signInEntersWithTheChosenAccount()
{
    SignInPage page;
    page.AskEmbedded({QStringLiteral("甲"), QStringLiteral("乙")}, 0);
    page.ShowReady();
    page.show();
    QSignalSpy entered(&page, &SignInPage::SigEnter);

    Child<QRadioButton>(page, "radioAccount1")->click();
    Press(page, "buttonEnter");

    QCOMPARE(entered.size(), 1);
    QCOMPARE(entered.first().first().toInt(), 1);
}

void tst_SignInPage::signInAsksForAccountAndPasswordOfAServer()
{
    SignInPage page;
    page.AskRemote(QStringLiteral("https://rpa.example.com"), QString(), false);
    page.ShowReady();
    page.show();
    QSignalSpy signedIn(&page, &SignInPage::SigSignIn);

    QVERIFY(!Child<QPushButton>(page, "buttonEnter")->isEnabled());
    QTest::keyClicks(Child<QLineEdit>(page, "editAccount"), QStringLiteral("wang"));
    QTest::keyClicks(Child<QLineEdit>(page, "editPassword"), QStringLiteral("secret"));
    QTest::keyClick(Child<QLineEdit>(page, "editPassword"), Qt::Key_Return);

    QCOMPARE(signedIn.size(), 1);
    QCOMPARE(signedIn.first(), (QVariantList{QStringLiteral("wang"), QStringLiteral("secret"), false}));
    QCOMPARE(Child<QLineEdit>(page, "editPassword")->echoMode(), QLineEdit::Password);
}

void tst_SignInPage::signInOffersToStay()
{
    SignInPage page;
    page.AskRemote(QStringLiteral("https://rpa.example.com"), QStringLiteral("wang"), false);
    page.ShowReady();
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    QSignalSpy signedIn(&page, &SignInPage::SigSignIn);
    auto* password = Child<QLineEdit>(page, "editPassword");
    auto* stay = Child<QCheckBox>(page, "checkStaySignedIn");
    QVERIFY(!stay->isChecked());

    QTest::keyClicks(password, QStringLiteral("secret"));
    QTest::keyClick(password, Qt::Key_Tab);
    QVERIFY(stay->hasFocus());
    QTest::keyClick(stay, Qt::Key_Space);
    QTest::keyClick(stay, Qt::Key_Tab);
    QVERIFY(Child<QPushButton>(page, "buttonEnter")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    QCOMPARE(signedIn.size(), 1);
    QVERIFY(signedIn.first().at(2).toBool());
    page.AskRemote(QStringLiteral("https://rpa.example.com"), QStringLiteral("wang"), true);
    QVERIFY(stay->isChecked());
}

void tst_SignInPage::signInForgetsThePasswordOnceItIsHandedOver()
{
    SignInPage page;
    page.AskRemote(QStringLiteral("https://rpa.example.com"), QStringLiteral("wang"), false);
    page.ShowReady();
    Child<QLineEdit>(page, "editPassword")->setText(QStringLiteral("secret"));

    Press(page, "buttonEnter");

    QVERIFY(Child<QLineEdit>(page, "editPassword")->text().isEmpty());
}

void tst_SignInPage::signInForgetsTheRefusalWithTheNextAttempt()
{
    SignInPage page;
    page.ShowReady();
    page.AskRemote(QStringLiteral("http://example.test"), QStringLiteral("zhang"), false);
    page.ShowProblem(QStringLiteral("账号或密码不正确。"));
    auto* state = Child<QLabel>(page, "labelState");
    QCOMPARE(state->text(), QStringLiteral("账号或密码不正确。"));

    QTest::keyClicks(Child<QLineEdit>(page, "editPassword"), QStringLiteral("secret"));
    QCOMPARE(state->text(), QStringLiteral("账号或密码不正确。"));
    Press(page, "buttonEnter");

    QCOMPARE(state->text(), QString());
}

void tst_SignInPage::signInForgetsARefusalWhenItAsksAgain_data()
{
    QTest::addColumn<bool>("embedded");
    QTest::newRow("own server") << true;
    QTest::newRow("another server") << false;
}

void tst_SignInPage::signInForgetsARefusalWhenItAsksAgain()
{
    QFETCH(bool, embedded);
    const auto ask = [embedded](SignInPage& page) {
        if (embedded)
            page.AskEmbedded({QStringLiteral("甲")}, 0);
        else
            page.AskRemote(QStringLiteral("https://rpa.example.com"), QString(), false);
    };
    SignInPage page;
    ask(page);
    page.ShowReady();
    page.ShowProblem(QStringLiteral("账号或密码不正确。"));

    ask(page);
    QCOMPARE(Child<QLabel>(page, "labelState")->text(), QString());

    // What is going on with the server is still true.
    page.ShowBusy(QStringLiteral("正在连接版本服务…"));
    ask(page);
    QCOMPARE(Child<QLabel>(page, "labelState")->text(), QStringLiteral("正在连接版本服务…"));
}

void tst_SignInPage::signInOffersToTryAgainWhenTheServerIsGone()
{
    SignInPage page;
    page.AskEmbedded({QStringLiteral("甲")}, 0);
    page.show();
    page.ShowBusy(QString());
    QSignalSpy retried(&page, &SignInPage::SigRetry);

    page.ShowProblem(QStringLiteral("版本服务意外停止"));
    Press(page, "buttonRetry");

    QCOMPARE(retried.size(), 1);
    const auto* state = Child<QLabel>(page, "labelState");
    QCOMPARE(state->text(), QStringLiteral("版本服务意外停止"));
    QVERIFY(state->property("problem").toBool());

    page.ShowReady();
    QVERIFY(!state->property("problem").toBool());
}

RPA_TEST_MAIN(tst_SignInPage)

#include "tst_signinpage.moc"
