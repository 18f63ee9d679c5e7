// SPDX-License-Identifier: Apache-2.0

#include "DebugPanesFixture.h"
#include "ModalDriver.h"
#include "TestApp.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTreeWidget>

using namespace EditorFixture;

namespace
{
RpaDebugPlace StatementPlace(const char* id)
{
    return {QString(), QLatin1String(id), 0};
}
} // namespace

// The list of breakpoints.
class tst_BreakpointsPane : public QObject, protected DebugPanesFixture
{
    Q_OBJECT

private slots:
    void init() { Begin(); }
    void cleanup() { End(); }

    void listBreakpoints();
    void goToABreakpoint();
    void removeBreakpoints();
    void editABreakpoint();
};

void tst_BreakpointsPane::listBreakpoints()
{
    OpenTab(BreakpointsTab);
    RpaBreakpoint point;
    point.place = StatementPlace("c");
    point.condition = QStringLiteral("n > 1");
    breakpoints->Put(point);
    breakpoints->Toggle(StatementPlace("a"));
    auto* list = Find<QTreeWidget>("breakpointList");
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(1)->text(0), QStringLiteral("主流程 第 3 行"));
    QCOMPARE(list->topLevelItem(1)->text(1), QStringLiteral("输出日志"));
    QCOMPARE(list->topLevelItem(1)->text(2), QStringLiteral("条件：n > 1"));

    list->setFocus();
    list->setCurrentItem(list->topLevelItem(1));
    QTest::keyClick(list, Qt::Key_Space);

    QTRY_VERIFY(!breakpoints->Find(StatementPlace("c"))->enabled);
    QVERIFY(breakpoints->Find(StatementPlace("a"))->enabled);
    QCOMPARE(list->topLevelItem(1)->checkState(0), Qt::Unchecked);
}

void tst_BreakpointsPane::goToABreakpoint()
{
    OpenTab(BreakpointsTab);
    breakpoints->Toggle(StatementPlace("d"));
    QVector<RpaDebugPlace> chosen;
    connect(panes.get(), &DebugPanes::SigPlaceChosen, this,
            [&chosen](const RpaDebugPlace& place) { chosen << place; });
    auto* list = Find<QTreeWidget>("breakpointList");
    const QPoint place = list->visualItemRect(list->topLevelItem(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().statementId, QStringLiteral("d"));
}

void tst_BreakpointsPane::removeBreakpoints()
{
    OpenTab(BreakpointsTab);
    for (const char* id : {"a", "c", "d"})
        breakpoints->Toggle(StatementPlace(id));
    auto* list = Find<QTreeWidget>("breakpointList");
    list->setFocus();
    list->setCurrentItem(list->topLevelItem(1));
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(breakpoints->Get().size(), 2);
    QVERIFY(!breakpoints->Find(StatementPlace("c")));
    QTest::keyClick(list, Qt::Key_Delete);
    QVERIFY(!breakpoints->Find(StatementPlace("d"))); // the next one is current
}

void tst_BreakpointsPane::editABreakpoint()
{
    OpenTab(BreakpointsTab);
    breakpoints->Toggle(StatementPlace("a"));
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        Type(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditCondition")), QStringLiteral("n == 2"));
        auto* hits = dialog->findChild<QComboBox*>(QStringLiteral("comboBoxHits"));
        auto* number = dialog->findChild<QSpinBox*>(QStringLiteral("spinBoxHits"));
        QVERIFY(!number->isEnabled());
        hits->setFocus();
        QTest::keyClick(hits, Qt::Key_End);
        QVERIFY(number->isEnabled());
        number->setFocus();
        number->selectAll();
        QTest::keyClicks(number, QStringLiteral("5"));
        Type(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditLog")), QStringLiteral("n={n}"));
        ModalDriver::Press(dialog, QStringLiteral("确定"));
    });
    auto* list = Find<QTreeWidget>("breakpointList");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_F2);

    const RpaBreakpoint* point = breakpoints->Find(StatementPlace("a"));
    QVERIFY(point);
    QCOMPARE(point->condition, QStringLiteral("n == 2"));
    QCOMPARE(point->hits, 5);
    QCOMPARE(point->hitRule, RpaHitRule::Every);
    QCOMPARE(point->logText, QStringLiteral("n={n}"));
    QCOMPARE(list->topLevelItem(0)->text(2), QStringLiteral("条件：n == 2，每 5 次，写日志：n={n}"));
}

RPA_TEST_MAIN(tst_BreakpointsPane)
#include "tst_breakpointspane.moc"
