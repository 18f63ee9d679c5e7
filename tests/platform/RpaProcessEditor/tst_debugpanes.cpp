// SPDX-License-Identifier: Apache-2.0

#include "DebugPanesFixture.h"
#include "TestApp.h"

#include <QLabel>
#include <QTreeView>
#include <QTreeWidget>

using namespace EditorFixture;

// What all panes have in common, and the calls.
class tst_DebugPanes : public QObject, protected DebugPanesFixture
{
    Q_OBJECT

private slots:
    void init() { Begin(); }
    void cleanup() { End(); }

    void sayWhyTheyAreEmpty();
    void emptyWhenTheProgramGoesOn();
    void showTheClickedCall();
    void tellOfCallsThatAreNotListed();
    void openAtStopsUntilTheyAreClosed();
};

void tst_DebugPanes::sayWhyTheyAreEmpty()
{
    const auto why = [this](const char* pane) {
        const auto* label =
            panes->findChild<QWidget*>(QLatin1String(pane))->findChild<QLabel*>(QStringLiteral("labelWhy"));
        return label->isVisible() ? label->text() : QString();
    };
    QVERIFY(why("variablesPane").startsWith(QStringLiteral("没有正在运行的流程")));
    OpenTab(WatchesTab);
    QVERIFY(why("watchesPane").startsWith(QStringLiteral("没有正在运行的流程")));
    OpenTab(StackTab);
    QVERIFY(why("stackPane").startsWith(QStringLiteral("没有正在运行的流程")));
    source->Start();
    QVERIFY(why("stackPane").startsWith(QStringLiteral("流程正在运行")));
    OpenTab(WatchesTab);
    QVERIFY(why("watchesPane").startsWith(QStringLiteral("流程正在运行")));
    OpenTab(BreakpointsTab);
    QVERIFY(why("breakpointsPane").startsWith(QStringLiteral("还没有断点")));
}

void tst_DebugPanes::emptyWhenTheProgramGoesOn()
{
    StopWith({Scripted::Value(QStringLiteral("n"), QStringLiteral("1"))});
    QVERIFY(Find<QTreeView>("variableView")->isVisible());
    source->Resume();
    QVERIFY(!Find<QTreeView>("variableView")->isVisible());
    QCOMPARE(Find<QTreeView>("variableView")->model()->rowCount(), 0);
    QCOMPARE(Find<QTreeWidget>("stackList")->topLevelItemCount(), 0);
}

void tst_DebugPanes::showTheClickedCall()
{
    StopWith({});
    OpenTab(StackTab);
    QVector<RpaDebugPlace> chosen;
    connect(panes.get(), &DebugPanes::SigPlaceChosen, this,
            [&chosen](const RpaDebugPlace& place) { chosen << place; });
    auto* list = Find<QTreeWidget>("stackList");
    QCOMPARE(list->topLevelItem(0)->text(0), QStringLiteral("add"));
    QCOMPARE(list->topLevelItem(1)->text(0), QStringLiteral("主流程"));
    QCOMPARE(list->currentItem(), list->topLevelItem(0));

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->topLevelItem(1)).center());

    QCOMPARE(focus->GetFrame(), 1);
    QVERIFY(!chosen.isEmpty());
    QCOMPARE(chosen.last().line, 9);
    QCOMPARE(source->Asked(QStringLiteral("scopes")).frame, 1);
    QCOMPARE(list->currentItem(), list->topLevelItem(1));
}

void tst_DebugPanes::tellOfCallsThatAreNotListed()
{
    source->depthMore = 300;
    Stop();
    auto* list = Find<QTreeWidget>("stackList");
    QCOMPARE(list->topLevelItemCount(), 3);
    QCOMPARE(list->topLevelItem(2)->text(0), QStringLiteral("还有 300 层调用"));
    OpenTab(StackTab);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->topLevelItem(2)).center());
    QCOMPARE(focus->GetFrame(), 0);
}

void tst_DebugPanes::openAtStopsUntilTheyAreClosed()
{
    panes->hide();
    Stop();
    QVERIFY(panes->OpenAtStop());
    QVERIFY(!panes->OpenAtStop()); // they are open
    QVERIFY(panes->isVisible());

    QTest::mouseClick(Find<QWidget>("buttonClose"), Qt::LeftButton);
    QVERIFY(panes->isHidden());
    QVERIFY(!panes->OpenAtStop());
    panes->Toggle();
    QVERIFY(panes->isVisible());
    panes->Toggle();

    source->End();
    source->Start();
    QVERIFY(panes->OpenAtStop());
}

RPA_TEST_MAIN(tst_DebugPanes)
#include "tst_debugpanes.moc"
