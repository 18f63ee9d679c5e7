#include "AppListModel.h"
#include "AppListPage.h"
#include "MainWindow.h"
#include "PageFixture.h"
#include "QtTexts.h"
#include "SettingsPage.h"
#include "SignInPage.h"
#include "TestApp.h"
#include "WorkstationSettings.h"

#include <WbBaseUI/WbTheme.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
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
    void pagesFitIntoTheSmallestWindow();
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

    for (const int side : {16, 48, 256}) {
        QCOMPARE(window.windowIcon().pixmap(side).size(), QSize(side, side));
    }
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
    QCOMPARE(window.minimumWidth(), 1280);
    QCOMPARE(CutTexts(window), QStringList());

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

void tst_MainWindow::pagesFitIntoTheSmallestWindow()
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

RPA_TEST_MAIN(tst_MainWindow)

#include "tst_mainwindow.moc"
