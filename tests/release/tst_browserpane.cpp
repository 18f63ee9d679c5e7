// SPDX-License-Identifier: Apache-2.0

#include "EditorDriver.h"
#include "EditorWorld.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserEngine.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QtTest>

namespace
{
// A browser that only tells what it was asked to do.
class ToldBrowser : public IBrowserWidget, public IBrowserEngine
{
public:
    explicit ToldBrowser(QWidget* parent) : IBrowserWidget(parent) { setMinimumWidth(300); }

    void InitToolBar() override { told.append(QStringLiteral("tool bar")); }
    void SetEmbedded(bool embedded) override
    {
        told.append(embedded ? QStringLiteral("embedded") : QStringLiteral("alone"));
    }
    void Reset() override { told.append(QStringLiteral("reset")); }
    IBrowserEngine* GetBrowserEngine() override { return this; }
    void Open(const QString&, const Answer& answer) override { answer(false, {}); }
    void RunScript(const QString&, const Answer& answer) override { answer(false, {}); }

    QStringList told;
};

IBrowserBorderWindow* PopOutWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (auto* border = qobject_cast<IBrowserBorderWindow*>(window))
            return border;
    return nullptr;
}
} // namespace

class BrowserPaneTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }

    void init()
    {
        world.SignIn();
        WbBrowserLite::Instance()->SetBrowserFactory([this](QWidget* pane) {
            browser = new ToldBrowser(pane);
            return browser;
        });
    }

    void cleanup() { WbBrowserLite::Instance()->SetBrowserFactory(nullptr); }

    void showsTheBrowserBesideThePages()
    {
        EditorDriver author;
        OpenVersion(author);

        QCOMPARE(browser->parentWidget(), author.Find("widgetContainer"));
        QCOMPARE(browser->told, QStringList({QStringLiteral("tool bar"), QStringLiteral("embedded"),
                                             QStringLiteral("reset")}));
        QVERIFY(browser->isVisible());
        QVERIFY(!author.Find("RpaBrowserNaviWidget")->isVisible());
        QCOMPARE(author.Find("widgetContainer")->layout()->contentsMargins(), QMargins());
        QCOMPARE(author.Find("widgetContainer")->layout()->spacing(), 0);
    }

    void showsAStripWithACaptionWhenFolded()
    {
        EditorDriver author;
        OpenVersion(author);

        emit browser->SigFold();

        QWidget* strip = author.Find("RpaBrowserNaviWidget");
        QVERIFY(strip->isVisible());
        QVERIFY(!browser->isVisible());
        QCOMPARE(strip->width(), 34);
        QTRY_COMPARE(author.Find("widgetContainer")->width(), 34);
        QCOMPARE(strip->findChild<QLabel*>()->text(), QStringLiteral("浏\n览\n器\n窗\n口"));
        QCOMPARE(strip->findChild<QLabel*>()->contentsMargins(), QMargins(10, 10, 12, 10));
    }

    void unfoldingRestoresTheWidthsOfThePane()
    {
        EditorDriver author;
        OpenVersion(author);
        QWidget* pane = author.Find("widgetContainer");
        pane->setMinimumWidth(123);
        pane->setMaximumWidth(789);

        emit browser->SigFold();
        QTest::mouseClick(author.Find("RpaBrowserNaviWidget")->findChild<WbPushButton*>(), Qt::LeftButton);

        QCOMPARE(pane->minimumWidth(), 123);
        QCOMPARE(pane->maximumWidth(), 789);
        QVERIFY(browser->isVisible());
        QVERIFY(!author.Find("RpaBrowserNaviWidget")->isVisible());
    }

    void popsOutOverThePaneLessTwentyPixelsAboveAndBelow()
    {
        EditorDriver author;
        OpenVersion(author);
        const QWidget* pane = author.Find("widgetContainer");
        const int inset = DpiTool::ScaleDefault(20);
        const QRect expected(pane->mapToGlobal(QPoint(0, inset)),
                             QSize(pane->width(), pane->height() - 2 * inset));

        emit browser->SigPopup(true);

        QVERIFY(PopOutWindow());
        QCOMPARE(PopOutWindow()->geometry(), expected);
        QVERIFY(PopOutWindow()->isVisible());
        QVERIFY(pane->isHidden());
        QCOMPARE(browser->window(), static_cast<QWidget*>(PopOutWindow()));
    }

    void cannotBeFoldedWhilePoppedOut()
    {
        EditorDriver author;
        OpenVersion(author);
        QWidget* pane = author.Find("widgetContainer");
        const int minimum = pane->minimumWidth();
        const int maximum = pane->maximumWidth();
        emit browser->SigPopup(true);

        emit browser->SigFold();

        QCOMPARE(pane->minimumWidth(), minimum);
        QCOMPARE(pane->maximumWidth(), maximum);
        QVERIFY(!browser->isHidden());
        QVERIFY(author.Find("RpaBrowserNaviWidget")->isHidden());
    }

    void comesBackToThePane()
    {
        EditorDriver author;
        UIMain::Instance()->SetMainWidget(author.Find("editorWidget")->window());
        OpenVersion(author);
        emit browser->SigPopup(true);

        emit browser->SigPopup(false);

        QCOMPARE(browser->parentWidget(), author.Find("widgetContainer"));
        QVERIFY(!author.Find("widgetContainer")->isHidden());
        QVERIFY(!PopOutWindow()->isVisible());
        QTRY_VERIFY(browser->isVisible());
    }

    void thePopOutWindowHidesAndShowsWithTheEditor()
    {
        EditorDriver author;
        OpenVersion(author);
        emit browser->SigPopup(true);
        QWidget* editor = author.Find("editorWidget")->window();

        editor->hide();
        QVERIFY(!PopOutWindow()->isVisible());
        editor->show();
        QVERIFY(PopOutWindow()->isVisible());
    }

    void takesThePopOutWindowAlong()
    {
        EditorDriver author;
        OpenVersion(author);
        emit browser->SigPopup(true);
        const QPointer<QWidget> window = PopOutWindow();
        const QPointer<ToldBrowser> poppedOut = browser;

        author.Destroy();

        QVERIFY(!window);
        QVERIFY(!poppedOut);
    }

    void isUnfoldedAfterThePopOutToo()
    {
        EditorDriver author;
        OpenVersion(author);
        emit browser->SigPopup(true);
        emit browser->SigPopup(false);

        emit browser->SigFold();

        QVERIFY(author.Find("RpaBrowserNaviWidget")->isVisible());
    }

    void worksWithoutABrowser()
    {
        WbBrowserLite::Instance()->SetBrowserFactory([](QWidget*) { return nullptr; });
        EditorDriver author;
        OpenVersion(author);

        QVERIFY(!author.Find("widgetContainer")->isVisible());
        QVERIFY(!author.Find("widgetContainer")->layout());
        QVERIFY(author.Find("widgetContainer")->findChildren<QWidget*>().isEmpty());
    }

private:
    void OpenVersion(EditorDriver& author)
    {
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"));
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    EditorWorld world;
    ToldBrowser* browser = nullptr;
};

RPA_TEST_MAIN(BrowserPaneTest)
#include "tst_browserpane.moc"
