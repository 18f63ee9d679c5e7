#include "AppListModel.h"
#include "AppListPage.h"
#include "AppNameDialog.h"
#include "MainWindow.h"
#include "QtTexts.h"
#include "SettingsPage.h"
#include "SignInPage.h"
#include "TestApp.h"
#include "WorkstationSettings.h"

#include <WbBaseUI/WbTheme.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

namespace
{
AppRecord App(const QString& id, const QString& name)
{
    AppRecord app;
    app.id = id;
    app.name = name;
    app.changedAt = QDateTime(QDate(2026, 3, 5), QTime(14, 7));
    return app;
}

template <typename Widget>
Widget* Child(QWidget& page, const char* objectName)
{
    auto* found = page.findChild<Widget*>(QLatin1String(objectName));
    Q_ASSERT(found);
    return found;
}

void Press(QWidget& page, const char* objectName)
{
    QTest::mouseClick(Child<QAbstractButton>(page, objectName), Qt::LeftButton);
}

// Every text of a visible label or button fits where it stands.
QStringList CutTexts(QWidget& page)
{
    QStringList cut;
    for (QWidget* widget : page.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<QLabel*>(widget);
        const bool button = qobject_cast<QPushButton*>(widget) || qobject_cast<QRadioButton*>(widget) ||
                            qobject_cast<QCheckBox*>(widget);
        const bool oneLine = button || (label && !label->wordWrap());
        if (oneLine && widget->isVisible() && widget->width() < widget->minimumSizeHint().width()) {
            cut << widget->objectName() + widget->property("text").toString();
        }
    }
    return cut;
}
} // namespace

Q_DECLARE_METATYPE(AppNameDialog::Purpose)

class tst_Pages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void textsOfQtAreChinese();

    void signInWaitsUntilTheServerIsReady();
    void signInEntersWithTheChosenAccount();
    void signInAsksForAccountAndPasswordOfAServer();
    void signInOffersToStay();
    void signInForgetsThePasswordOnceItIsHandedOver();
    void signInForgetsTheRefusalWithTheNextAttempt();
    void signInForgetsARefusalWhenItAsksAgain_data();
    void signInForgetsARefusalWhenItAsksAgain();
    void signInOffersToTryAgainWhenTheServerIsGone();

    void windowTakesASchemeChosenBeforeItIsShown();

    void listOpensTheAppThatIsClicked();
    void listOpensTheCurrentAppOnReturn();
    void listGetsTheKeysOnceItsAppsAreThere();
    void listRenamesTheCurrentAppOnF2();
    void listFindsAppsByAPartOfTheirName();
    void listSaysWhenNothingIsFound();
    void listOffersToCreateTheFirstApp();
    void listShowsWhyItCouldNotBeReadAndTriesAgain();

    void nameDialogTakesNamesOfOneToFiftyCharacters_data();
    void nameDialogTakesNamesOfOneToFiftyCharacters();
    void nameDialogWaitsForTheServerAfterReturn_data();
    void nameDialogWaitsForTheServerAfterReturn();
    void nameDialogGoesFromTheNameToTheKindByTab();
    void nameDialogStaysOpenWithTheReasonOfARefusal();

    void settingsWriteWhatIsChosen();
    void settingsFollowChangesMadeElsewhere();
    void settingsAcceptOnlyAnAddressOfAServer();
    void settingsHideAccountsOfARemoteServer();
    void settingsSignOutFromARemoteServer();

    void windowShortensALongAccountName();
    void windowAsksBeforeItCloses();
    void windowClosesForGoodWhenItMay();
    void pagesFitIntoTheSmallestWindow();
};

void tst_Pages::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void tst_Pages::textsOfQtAreChinese()
{
    QtTexts::Install();

    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    QVERIFY(QCoreApplication::translate("QFileDialog", "Look in:") != QLatin1String("Look in:"));
}

void tst_Pages::signInWaitsUntilTheServerIsReady()
{
    SignInPage page;
    page.AskEmbedded({QStringLiteral("甲"), QStringLiteral("乙")}, 0);
    page.ShowBusy(QStringLiteral("正在连接版本服务…"));

    QVERIFY(!Child<QPushButton>(page, "buttonEnter")->isEnabled());
    QCOMPARE(Child<QLabel>(page, "labelState")->text(), QStringLiteral("正在连接版本服务…"));

    page.ShowReady();

    QVERIFY(Child<QPushButton>(page, "buttonEnter")->isEnabled());
}

void tst_Pages::signInEntersWithTheChosenAccount()
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

void tst_Pages::signInAsksForAccountAndPasswordOfAServer()
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

void tst_Pages::signInOffersToStay()
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

void tst_Pages::signInForgetsThePasswordOnceItIsHandedOver()
{
    SignInPage page;
    page.AskRemote(QStringLiteral("https://rpa.example.com"), QStringLiteral("wang"), false);
    page.ShowReady();
    Child<QLineEdit>(page, "editPassword")->setText(QStringLiteral("secret"));

    Press(page, "buttonEnter");

    QVERIFY(Child<QLineEdit>(page, "editPassword")->text().isEmpty());
}

void tst_Pages::signInForgetsTheRefusalWithTheNextAttempt()
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

void tst_Pages::signInForgetsARefusalWhenItAsksAgain_data()
{
    QTest::addColumn<bool>("embedded");
    QTest::newRow("own server") << true;
    QTest::newRow("another server") << false;
}

void tst_Pages::signInForgetsARefusalWhenItAsksAgain()
{
    QFETCH(bool, embedded);
    const auto ask = [embedded](SignInPage& page) {
        if (embedded) {
            page.AskEmbedded({QStringLiteral("甲")}, 0);
        } else {
            page.AskRemote(QStringLiteral("https://rpa.example.com"), QString(), false);
        }
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

void tst_Pages::signInOffersToTryAgainWhenTheServerIsGone()
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

void tst_Pages::windowTakesASchemeChosenBeforeItIsShown()
{
    MainWindow window;
    auto* hint = new QLabel(QStringLiteral("提示"), &window);
    hint->setProperty("hint", true);

    WbTheme::Instance()->Apply(WbTheme::Scheme::Dark);
    window.show();

    const QImage head = Child<QWidget>(window, "mainHead")->grab().toImage();
    const QColor secondary = hint->palette().color(QPalette::WindowText);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    QCOMPARE(head.pixelColor(head.width() / 2, 4), WbTheme::Color(WbColor::Surface, WbTheme::Scheme::Dark));
    QCOMPARE(secondary, WbTheme::Color(WbColor::TextSecondary, WbTheme::Scheme::Dark));
}

void tst_Pages::listOpensTheAppThatIsClicked()
{
    AppListModel model;
    AppListPage page(&model);
    page.resize(1280, 640);
    page.show();
    model.SetApps(
        {App(QStringLiteral("a"), QStringLiteral("开票")), App(QStringLiteral("b"), QStringLiteral("对账"))});
    page.ShowApps();
    auto* cards = Child<QListView>(page, "listApps");
    QSignalSpy opened(&page, &AppListPage::SigOpen);

    QTest::mouseClick(cards->viewport(), Qt::LeftButton, Qt::NoModifier,
                      cards->visualRect(cards->model()->index(1, 0)).center());

    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().first().value<AppRecord>().id, QStringLiteral("b"));
}

void tst_Pages::listOpensTheCurrentAppOnReturn()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps(
        {App(QStringLiteral("a"), QStringLiteral("开票")), App(QStringLiteral("b"), QStringLiteral("对账"))});
    page.ShowApps();
    page.SelectApp(QStringLiteral("b"));
    QSignalSpy opened(&page, &AppListPage::SigOpen);

    QTest::keyClick(Child<QListView>(page, "listApps"), Qt::Key_Return);

    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().first().value<AppRecord>().id, QStringLiteral("b"));
}

void tst_Pages::listGetsTheKeysOnceItsAppsAreThere()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    Child<QToolButton>(page, "tabMine")->setFocus(); // as when the page before goes away
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});

    page.ShowApps();

    QVERIFY(Child<QListView>(page, "listApps")->hasFocus());
}

void tst_Pages::listRenamesTheCurrentAppOnF2()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});
    page.ShowApps();
    page.SelectApp(QStringLiteral("a"));
    QSignalSpy renamed(&page, &AppListPage::SigRename);

    QTest::keyClick(Child<QListView>(page, "listApps"), Qt::Key_F2);

    QCOMPARE(renamed.size(), 1);
    QCOMPARE(renamed.first().first().value<AppRecord>().id, QStringLiteral("a"));
}

void tst_Pages::listFindsAppsByAPartOfTheirName()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("Invoice 汇总")),
                   App(QStringLiteral("b"), QStringLiteral("对账"))});
    page.ShowApps();

    QTest::keyClicks(Child<QLineEdit>(page, "editSearch"), QStringLiteral("INV"));

    const QAbstractItemModel* shown = Child<QListView>(page, "listApps")->model();
    QCOMPARE(shown->rowCount(), 1);
    QCOMPARE(shown->index(0, 0).data().toString(), QStringLiteral("Invoice 汇总"));
}

void tst_Pages::listSaysWhenNothingIsFound()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({App(QStringLiteral("a"), QStringLiteral("开票"))});
    page.ShowApps();

    Child<QLineEdit>(page, "editSearch")->setText(QStringLiteral("工资"));

    QVERIFY(Child<QLabel>(page, "labelEmpty")->isVisible());
    QCOMPARE(Child<QLabel>(page, "labelEmpty")->text(), QStringLiteral("没有找到名称包含“工资”的应用"));
    QVERIFY(!Child<QPushButton>(page, "buttonEmptyVisual")->isVisible());
}

void tst_Pages::listOffersToCreateTheFirstApp()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    model.SetApps({});
    page.ShowApps();
    QSignalSpy created(&page, &AppListPage::SigCreate);

    Press(page, "buttonEmptyVisual");
    Press(page, "buttonEmptyProgram");

    QCOMPARE(Child<QLabel>(page, "labelEmpty")->text(), QStringLiteral("还没有应用"));
    QCOMPARE(created.size(), 2);
    QCOMPARE(created.at(0).first().toInt(), int(AppKindVisual));
    QCOMPARE(created.at(1).first().toInt(), int(AppKindProgram));
}

void tst_Pages::listShowsWhyItCouldNotBeReadAndTriesAgain()
{
    AppListModel model;
    AppListPage page(&model);
    page.show();
    QSignalSpy refreshed(&page, &AppListPage::SigRefresh);

    page.ShowFailed(QStringLiteral("无法连接服务器"));

    auto* status = Child<QWidget>(page, "statusApps");
    QVERIFY(status->isVisible());
    QVERIFY(!Child<QWidget>(page, "stackApps")->isVisible());
    const auto buttons = status->findChildren<QAbstractButton*>();
    QCOMPARE(buttons.size(), 1);
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    QCOMPARE(refreshed.size(), 1);
}

void tst_Pages::nameDialogTakesNamesOfOneToFiftyCharacters_data()
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

void tst_Pages::nameDialogTakesNamesOfOneToFiftyCharacters()
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

void tst_Pages::nameDialogWaitsForTheServerAfterReturn_data()
{
    QTest::addColumn<AppNameDialog::Purpose>("purpose");
    QTest::newRow("create") << AppNameDialog::Purpose::Create;
    QTest::newRow("rename") << AppNameDialog::Purpose::Rename;
}

void tst_Pages::nameDialogWaitsForTheServerAfterReturn()
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

void tst_Pages::nameDialogGoesFromTheNameToTheKindByTab()
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

void tst_Pages::nameDialogStaysOpenWithTheReasonOfARefusal()
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

void tst_Pages::settingsWriteWhatIsChosen()
{
    const QTemporaryDir folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);
    page.show();

    QTest::keyClick(Child<QComboBox>(page, "comboTheme"), Qt::Key_End);
    QTest::keyClick(Child<QComboBox>(page, "comboDates"), Qt::Key_Down);

    QCOMPARE(settings.GetTheme(), ThemeChoice::Dark);
    QCOMPARE(settings.GetDateLanguage(), DateLanguage::Chinese);
}

void tst_Pages::settingsFollowChangesMadeElsewhere()
{
    const QTemporaryDir folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    SettingsPage page(&settings);

    settings.SetTheme(ThemeChoice::Light);
    settings.SetDateLanguage(DateLanguage::Japanese);

    QCOMPARE(Child<QComboBox>(page, "comboTheme")->currentText(), QStringLiteral("浅色"));
    QCOMPARE(Child<QComboBox>(page, "comboDates")->currentText(), QStringLiteral("日本語"));
}

void tst_Pages::settingsAcceptOnlyAnAddressOfAServer()
{
    const QTemporaryDir folder;
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

void tst_Pages::settingsHideAccountsOfARemoteServer()
{
    const QTemporaryDir folder;
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

void tst_Pages::settingsSignOutFromARemoteServer()
{
    const QTemporaryDir folder;
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

void tst_Pages::windowShortensALongAccountName()
{
    MainWindow window;
    const QString name(200, QChar(0x540d));

    window.ShowAccount(name);
    window.show();

    const auto* account = Child<QLabel>(window, "labelAccount");
    QVERIFY(account->text().size() < name.size());
    QCOMPARE(account->toolTip(), name);
    QCOMPARE(window.minimumWidth(), 1280);
    QCOMPARE(CutTexts(window), QStringList());

    window.ShowAccount(QStringLiteral("本机作者"));
    QCOMPARE(account->text(), QStringLiteral("本机作者"));
    QCOMPARE(account->toolTip(), QString());
}

void tst_Pages::windowAsksBeforeItCloses()
{
    MainWindow window;
    window.show();
    QSignalSpy asked(&window, &MainWindow::SigCloseRequested);

    window.close();

    QVERIFY(window.isVisible());
    QTRY_COMPARE(asked.size(), 1);
}

void tst_Pages::windowClosesForGoodWhenItMay()
{
    MainWindow window;
    connect(&window, &MainWindow::SigCloseRequested, &window, &MainWindow::CloseForGood);
    window.show();

    window.close();

    QTRY_VERIFY(!window.isVisible());
}

void tst_Pages::pagesFitIntoTheSmallestWindow()
{
    const QTemporaryDir folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    AppListModel model;
    MainWindow window;
    auto* signIn = new SignInPage;
    auto* list = new AppListPage(&model);
    auto* settingsPage = new SettingsPage(&settings);
    window.AddPage(signIn, QString());
    window.AddPage(list, QStringLiteral("返回应用列表"));
    window.AddPage(settingsPage, QStringLiteral("返回"));
    window.ShowAccount(QStringLiteral("本机作者"));
    signIn->AskEmbedded({QStringLiteral("甲"), QStringLiteral("乙")}, 0);
    signIn->ShowProblem(QStringLiteral("无法启动版本服务"));
    settingsPage->ShowAccounts({QStringLiteral("甲")}, 0);
    list->ShowApps();
    window.resize(window.minimumSize());
    window.show();

    for (QWidget* page : QList<QWidget*>{signIn, list, settingsPage}) {
        window.ShowPage(page);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(window.size(), QSize(1280, 720));
        QCOMPARE(CutTexts(window).join(QLatin1Char(',')), QString());
    }
}

RPA_TEST_MAIN(tst_Pages)
#include "tst_pages.moc"
