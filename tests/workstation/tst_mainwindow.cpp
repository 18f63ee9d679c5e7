// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "AppListPage.h"
#include "MainWindow.h"
#include "PageFixture.h"
#include "QtTexts.h"
#include "ReleasedAppModel.h"
#include "ReleasedListPage.h"
#include "RunPage.h"
#include "SettingsPage.h"
#include "SignInPage.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "TextFit.h"
#include "WindowFit.h"
#include "WorkstationSettings.h"

#include <RpaAppData/RpaAppData.h>
#include <WbBaseUI/WbTheme.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

// The window around the pages.
class tst_MainWindow : public PageFixture
{
    Q_OBJECT

private slots:
    void textsOfQtAreChinese();
    void keysAreCalledByTheirNames();
    void titleNamesWhatIsShown();
    void windowHasAnIcon();

    void windowTakesASchemeChosenBeforeItIsShown();

    void windowShortensALongAccountName();
    void windowAsksBeforeItCloses();
    void windowClosesForGoodWhenItMay();
    void pagesFitIntoTheSmallestWindow_data();
    void pagesFitIntoTheSmallestWindow();
    void staysWithinItsScreen_data();
    void staysWithinItsScreen();
};

void tst_MainWindow::textsOfQtAreChinese()
{
    QtTexts::Install();

    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    QVERIFY(QCoreApplication::translate("QFileDialog", "Look in:") != QLatin1String("Look in:"));
}

void tst_MainWindow::keysAreCalledByTheirNames()
{
    QtTexts::Install();

    const auto name = [](const char* keys) {
        return QKeySequence(QLatin1String(keys)).toString(QKeySequence::NativeText);
    };
    QCOMPARE(name("Alt+Up"), QStringLiteral("Alt+↑"));
    QCOMPARE(name("Ctrl+Shift+PgDown"), QStringLiteral("Ctrl+Shift+PageDown"));
    QCOMPARE(name("Del"), QStringLiteral("Delete"));
    QCOMPARE(name("Ctrl+Return"), QStringLiteral("Ctrl+回车"));
    QCOMPARE(name("Ctrl+K"), QStringLiteral("Ctrl+K"));
}

void tst_MainWindow::titleNamesWhatIsShown()
{
    MainWindow window;
    auto* list = new QWidget;
    auto* editor = new QWidget;
    window.AddPage(list, QString());
    window.AddPage(editor, QStringLiteral("返回"));
    editor->setWindowTitle(QStringLiteral("发票\n识别[*]"));
    QCOMPARE(window.windowTitle(), QStringLiteral("RPA 工作站"));

    window.ShowPage(editor);
    QCOMPARE(window.windowTitle(), QStringLiteral("发票 识别[*][*] - RPA 工作站"));
    editor->setWindowTitle(QStringLiteral("对账"));
    QCOMPARE(window.windowTitle(), QStringLiteral("对账 - RPA 工作站"));
    window.ShowPage(list);

    QCOMPARE(window.windowTitle(), QStringLiteral("RPA 工作站"));
}

void tst_MainWindow::windowHasAnIcon()
{
    const MainWindow window;

    for (const int side : {16, 48, 256})
        QCOMPARE(window.windowIcon().pixmap(side).size(), QSize(side, side));
}

void tst_MainWindow::windowTakesASchemeChosenBeforeItIsShown()
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

void tst_MainWindow::windowShortensALongAccountName()
{
    MainWindow window;
    const QString name(200, QChar(0x540d));

    window.ShowAccount(name);
    window.show();

    const auto* account = Child<QLabel>(window, "labelAccount");
    QVERIFY(account->text().size() < name.size());
    QCOMPARE(account->toolTip(), name);
    window.setMinimumSize(1, 1); // the screen of the test may be smaller
    window.resize(960, 540);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(TextFit::CutTexts(window), QStringList());

    window.ShowAccount(QStringLiteral("本机作者"));
    QCOMPARE(account->text(), QStringLiteral("本机作者"));
    QCOMPARE(account->toolTip(), QString());
}

void tst_MainWindow::windowAsksBeforeItCloses()
{
    MainWindow window;
    window.show();
    QSignalSpy asked(&window, &MainWindow::SigCloseRequested);

    window.close();

    QVERIFY(window.isVisible());
    QTRY_COMPARE(asked.size(), 1);
}

void tst_MainWindow::windowClosesForGoodWhenItMay()
{
    MainWindow window;
    connect(&window, &MainWindow::SigCloseRequested, &window, &MainWindow::CloseForGood);
    window.show();

    window.close();

    QTRY_VERIFY(!window.isVisible());
}

void tst_MainWindow::pagesFitIntoTheSmallestWindow_data()
{
    QTest::addColumn<int>("scheme");

    QTest::newRow("light") << int(WbTheme::Scheme::Light);
    QTest::newRow("dark") << int(WbTheme::Scheme::Dark);
}

void tst_MainWindow::pagesFitIntoTheSmallestWindow()
{
    QFETCH(int, scheme);
    WbTheme::Instance()->Apply(static_cast<WbTheme::Scheme>(scheme));
    const TestFolder folder;
    WorkstationSettings settings(folder.filePath(QStringLiteral("a.ini")));
    AppListModel model;
    ReleasedAppModel released;
    MainWindow window;
    auto* signIn = new SignInPage;
    auto* list = new AppListPage(&model);
    auto* settingsPage = new SettingsPage(&settings);
    auto* online = new ReleasedListPage(AppPageHead::Online, &released);
    auto* gray = new ReleasedListPage(AppPageHead::Gray, &released);
    auto* run = new RunPage;
    for (QWidget* page : QList<QWidget*>{signIn, list, settingsPage, online, gray, run})
        window.AddPage(page, QStringLiteral("返回应用列表"));
    window.ShowAccount(QStringLiteral("本机作者"));
    signIn->AskEmbedded({QStringLiteral("甲"), QStringLiteral("乙")}, 0);
    signIn->ShowProblem(QStringLiteral("无法启动版本服务"));
    settingsPage->ShowAccounts({QStringLiteral("甲")}, 0);
    list->ShowApps();
    online->ShowApps();
    gray->ShowApps();
    gray->ShowRedeemed(QStringLiteral("邀请码不正确、已经用过，或者已经被应用的创建者收回"));
    RpaAppData app;
    app.InitDefault();
    QVERIFY(run->ShowApp({}, app.ToJson()));
    window.show();
    window.setMinimumSize(1, 1); // the screen of the test may be smaller
    window.resize(960, 540);

    for (QWidget* page : QList<QWidget*>{signIn, list, settingsPage, online, gray, run}) {
        window.ShowPage(page);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(window.size(), QSize(960, 540));
        QCOMPARE(TextFit::CutTexts(window).join(QLatin1Char(',')), QString());
        const QSize least = page->minimumSizeHint();
        QVERIFY2(least.width() <= page->width() && least.height() <= page->height(),
                 qPrintable(page->objectName()));
        if (qEnvironmentVariableIsSet("RPA_PICTURES"))
            window.grab().save(qEnvironmentVariable("RPA_PICTURES") +
                               QStringLiteral("/main-%1-%2.png").arg(page->objectName()).arg(scheme));
    }
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void tst_MainWindow::staysWithinItsScreen_data()
{
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<QRect>("free");
    QTest::addColumn<QRect>("place");
    QTest::addColumn<QSize>("least");

    const QRect usual(10, 20, 1280, 720);
    QTest::newRow("room") << usual << QRect(0, 0, 1920, 1080) << usual << QSize(960, 540);
    QTest::newRow("double scale") << usual << QRect(0, 0, 960, 510) << QRect(0, 0, 960, 510)
                                  << QSize(960, 510);
    QTest::newRow("low") << usual << QRect(0, 30, 1600, 700) << QRect(10, 30, 1280, 700) << QSize(960, 540);
    QTest::newRow("second screen") << usual << QRect(1920, 0, 1400, 900) << QRect(1920, 20, 1280, 720)
                                   << QSize(960, 540);
    QTest::newRow("beyond the edge") << QRect(900, 600, 1280, 720) << QRect(0, 0, 1920, 1080)
                                     << QRect(640, 360, 1280, 720) << QSize(960, 540);
}

void tst_MainWindow::staysWithinItsScreen()
{
    QFETCH(QRect, wanted);
    QFETCH(QRect, free);
    QFETCH(QRect, place);
    QFETCH(QSize, least);
    QWidget window;
    window.setWindowFlag(Qt::FramelessWindowHint);
    auto* fit = new WindowFit(&window);
    window.show();
    window.setMinimumSize(1, 1);
    window.setGeometry(wanted);

    fit->Fit(free);

    QCOMPARE(window.geometry(), place);
    QCOMPARE(window.minimumSize(), least);
}

RPA_TEST_MAIN(tst_MainWindow)

#include "tst_mainwindow.moc"
