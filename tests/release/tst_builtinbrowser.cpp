// SPDX-License-Identifier: Apache-2.0

// The pane with the built-in browser, worked by its own buttons.
#include "EditorDriver.h"
#include "EditorWorld.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QSplitter>
#include <QToolButton>
#include <QtTest>

namespace
{
IBrowserBorderWindow* PopOutWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (auto* border = qobject_cast<IBrowserBorderWindow*>(window))
            return border;
    return nullptr;
}
} // namespace

class BuiltInBrowserTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }
    void init() { world.SignIn(); }

    void foldingAndUnfoldingRestoresTheWidthsOfThePane()
    {
        EditorDriver author;
        OpenVersion(author);
        QWidget* pane = author.Find("widgetContainer");
        pane->setMinimumWidth(321);
        pane->setMaximumWidth(789);

        QTest::mouseClick(author.Find("browserFold"), Qt::LeftButton);
        QTRY_COMPARE(pane->width(), 34);
        QTest::mouseClick(author.Find("RpaBrowserNaviWidget")->findChild<WbPushButton*>(), Qt::LeftButton);

        QCOMPARE(pane->minimumWidth(), 321);
        QCOMPARE(pane->maximumWidth(), 789);
        QVERIFY(author.Find("browserPane")->isVisible());
    }

    void unfoldsAsWideAsItWas()
    {
        EditorDriver author;
        OpenVersion(author);
        const QWidget* pane = author.Find("widgetContainer");
        auto* splitter = author.Find<QSplitter>("splitter");
        splitter->setSizes({500, 480});
        const int before = pane->width();

        QTest::mouseClick(author.Find("browserFold"), Qt::LeftButton);
        QTRY_COMPARE(pane->width(), 34);
        QTest::mouseClick(author.Find("RpaBrowserNaviWidget")->findChild<WbPushButton*>(), Qt::LeftButton);

        QTRY_COMPARE(pane->width(), before);
        QVERIFY(before > 320);
    }

    void popsOutOverThePaneAndComesBack()
    {
        EditorDriver author;
        OpenVersion(author);
        auto* browser = author.Find<IBrowserWidget>("browserPane");
        const QWidget* pane = author.Find("widgetContainer");
        const int inset = DpiTool::ScaleDefault(20);
        const QRect expected(pane->mapToGlobal(QPoint(0, inset)),
                             QSize(pane->width(), pane->height() - 2 * inset));

        QTest::mouseClick(author.Find("browserPopup"), Qt::LeftButton);
        QCOMPARE(PopOutWindow()->geometry(), expected);
        QVERIFY(browser->isVisible());

        QTest::mouseClick(PopOutWindow()->findChild<QToolButton*>(QStringLiteral("browserDockBack")),
                          Qt::LeftButton);
        QVERIFY(!PopOutWindow()->isVisible());
        QCOMPARE(browser->parentWidget(), pane);
        QTRY_VERIFY(browser->isVisible());
    }

    void cannotBeFoldedWhilePoppedOut()
    {
        EditorDriver author;
        OpenVersion(author);
        auto* browser = author.Find<IBrowserWidget>("browserPane");
        QWidget* pane = author.Find("widgetContainer");
        const QPair<int, int> widths(pane->minimumWidth(), pane->maximumWidth());
        QTest::mouseClick(author.Find("browserPopup"), Qt::LeftButton);

        QVERIFY(browser->findChild<QToolButton*>(QStringLiteral("browserFold"))->isHidden());
        emit browser->SigFold();

        QCOMPARE(qMakePair(pane->minimumWidth(), pane->maximumWidth()), widths);
        QVERIFY(browser->isVisible());
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
};

RPA_TEST_MAIN(BuiltInBrowserTest)
#include "tst_builtinbrowser.moc"
