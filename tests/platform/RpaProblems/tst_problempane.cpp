// SPDX-License-Identifier: Apache-2.0

#include "ProblemPaneFixture.h"
#include "TestApp.h"

#include <QSignalSpy>

using namespace ProblemPaneFixture;

// The list, its counts, and what the author does with a row.
class ProblemPaneTest : public QObject
{
    Q_OBJECT

private slots:
    void countsBesideItsTitle();
    void isFoldedAtFirst();
    void goesToTheProblemByEnterAndByDoubleClick();
    void ignoresWithAReasonOnly();
    void anErrorCannotBeIgnored();
    void keepsTheCurrentRowWhenAnswersCome();
    void showsWholeTexts();
};

void ProblemPaneTest::countsBesideItsTitle()
{
    Pane pane({Log("=a"), Log("=b"), Set("c"), Step("process.return", {}), Log("x")});
    QTRY_COMPARE(pane.Counts(), QStringLiteral("错误 2　警告 1　提示 1"));
    QCOMPARE(pane.List()->topLevelItemCount(), 4);

    pane.Main()->SetStatements({});
    QTRY_COMPARE(pane.Counts(), QStringLiteral("没有发现问题"));
    QCOMPARE(pane.List()->topLevelItemCount(), 0);
}

void ProblemPaneTest::isFoldedAtFirst()
{
    RpaProblemPane pane;
    pane.show();
    auto* fold = pane.findChild<QToolButton*>(QStringLiteral("problemFoldButton"));
    QVERIFY(!pane.findChild<QTreeWidget*>()->isVisible());

    QTest::mouseClick(fold, Qt::LeftButton);
    QVERIFY(pane.findChild<QTreeWidget*>()->isVisible());
    QTest::keyClick(fold, Qt::Key_Space);
    QVERIFY(!pane.findChild<QTreeWidget*>()->isVisible());
}

void ProblemPaneTest::goesToTheProblemByEnterAndByDoubleClick()
{
    Pane pane({Log("x"), Log("=a")});
    QSignalSpy chosen(&pane.widget, &RpaProblemPane::SigProblemChosen);
    QTRY_COMPARE(pane.List()->topLevelItemCount(), 1);

    pane.List()->setCurrentItem(pane.Row(0));
    QTest::keyClick(pane.List(), Qt::Key_Return);
    const QPoint place = pane.List()->visualItemRect(pane.Row(0)).center();
    QTest::mouseClick(pane.List()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(pane.List()->viewport(), Qt::LeftButton, Qt::NoModifier, place);

    QCOMPARE(chosen.count(), 2);
    const auto problem = chosen.at(0).at(0).value<RpaProblem>();
    QCOMPARE(problem.place.statementId, pane.Main()->GetRoot()->GetChild(1)->GetId());
}

void ProblemPaneTest::ignoresWithAReasonOnly()
{
    Pane pane({Set("a")});
    QTRY_COMPARE(pane.List()->topLevelItemCount(), 1);
    pane.List()->setCurrentItem(pane.Row(0));
    pane.Press(QStringLiteral("忽略（写明原因）"));
    auto* reason = pane.Find<QLineEdit>("ignoreReason");
    QVERIFY(reason->isVisible());
    QVERIFY(!pane.Find<QPushButton>("ignoreAccept")->isEnabled());

    QTest::keyClicks(reason, QStringLiteral("later"));
    QTest::keyClick(reason, Qt::Key_Return);
    QCOMPARE(pane.List()->topLevelItemCount(), 0);
    QCOMPARE(pane.Counts(), QStringLiteral("没有发现问题"));

    auto* shows = pane.Find<QCheckBox>("checkShowIgnored");
    shows->setChecked(true);
    QCOMPARE(pane.Row(0)->text(1), QStringLiteral("已忽略：later"));
    pane.List()->setCurrentItem(pane.Row(0));
    pane.Press(QStringLiteral("不再忽略"));
    shows->setChecked(false);
    QCOMPARE(pane.List()->topLevelItemCount(), 1);
}

void ProblemPaneTest::anErrorCannotBeIgnored()
{
    Pane pane({Log("=a")});
    QTRY_COMPARE(pane.List()->topLevelItemCount(), 1);
    pane.List()->setCurrentItem(pane.Row(0));

    pane.Press(QStringLiteral("忽略（写明原因）"));

    QVERIFY(!pane.Find<QLineEdit>("ignoreReason")->isVisible());
}

void ProblemPaneTest::keepsTheCurrentRowWhenAnswersCome()
{
    Pane pane({Log("=a"), Log("=b")});
    QTRY_COMPARE(pane.List()->topLevelItemCount(), 2);
    pane.List()->setCurrentItem(pane.Row(1));
    const QString message = pane.Row(1)->text(0);

    pane.Main()->Insert(QString(), 0, {Log("=c")});

    QTRY_COMPARE(pane.List()->topLevelItemCount(), 3);
    QVERIFY(pane.List()->currentItem());
    QCOMPARE(pane.List()->currentItem()->text(0), message);
}

void ProblemPaneTest::showsWholeTexts()
{
    Pane pane({});
    pane.widget.resize(600, 400);
    RpaCheckInfo shortOne = pane.Failure(QString());
    RpaCheckInfo longOne = shortOne;
    longOne.subject = QStringLiteral("another");
    longOne.message =
        QStringLiteral("语句“打开网页”的参数“网址”引用了变量“客户地址”，它前面没有语句给它赋值");
    longOne.remedy = QStringLiteral("在它之前用“设置变量”给“客户地址”赋值，或者在属性面板里换成另一个变量");

    pane.widget.ShowRun({shortOne, longOne});

    const auto heightOf = [&pane](int row) { return pane.List()->visualItemRect(pane.Row(row)).height(); };
    QTRY_VERIFY(heightOf(1) > heightOf(0));
    for (const int column : {0, 1}) {
        const QString text = pane.Row(1)->text(column);
        const int frame = column == 0 ? 42 : 16; // icon and padding
        const QRect room(0, 0, pane.List()->columnWidth(column) - frame, 1000);
        const int needed = pane.List()->fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height();
        QVERIFY(heightOf(1) >= needed);
        QCOMPARE(pane.Row(1)->toolTip(column), text);
    }
}

RPA_TEST_MAIN(ProblemPaneTest)
#include "tst_problempane.moc"
