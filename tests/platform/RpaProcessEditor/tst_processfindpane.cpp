// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"
#include "VisualEditorFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTreeView>

#include <memory>

using namespace EditorFixture;

namespace
{
RpaStatement Calling(const QString& id, const QString& text, const QString& note = QString())
{
    RpaStatement log = Log(id);
    log.arguments.insert(QStringLiteral("text"), text);
    log.note = note;
    return log;
}

// The pane in the editor of an app with "订单" in both processes.
struct Finding : Editor
{
    Finding()
        : Editor({Calling(QStringLiteral("p"), QStringLiteral("订单来了")),
                  Calling(QStringLiteral("q"), QStringLiteral("=订单号 + \"号\""), QStringLiteral("看订单")),
                  Calling(QStringLiteral("r"), QStringLiteral("别的"))}),
          pane(Find<QWidget>(QStringLiteral("processFindPane"))),
          list(pane->findChild<QTreeView*>(QStringLiteral("foundPlaces"))),
          text(pane->findChild<QLineEdit*>(QStringLiteral("lineEditFindEverywhere"))),
          with(pane->findChild<QLineEdit*>(QStringLiteral("lineEditReplaceEverywhere"))),
          all(pane->findChild<QPushButton*>(QStringLiteral("replaceEverywhereButton"))),
          chosen(pane->findChild<QPushButton*>(QStringLiteral("replaceChosenButton")))
    {
        RpaStatement reading = Statement(QStringLiteral("t-read"), QStringLiteral("s"));
        reading.arguments.insert(QStringLiteral("path"), QStringLiteral("订单.txt"));
        reading.output = QStringLiteral("订单号");
        reading.enabled = false;
        app->GetProcessDataManager()->GetProcess(1)->SetStatements({reading});
        app->SetModified(false);
    }

    void Open(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        Click(QStringLiteral("r"));
        Key(key, modifiers);
        QVERIFY(pane->isVisible());
        QVERIFY(text->hasFocus());
        Type(text, QStringLiteral("订单"));
    }
    void OpenToReplace(const QString& replacement)
    {
        Open(Qt::Key_H, Qt::ControlModifier);
        with->setFocus();
        Type(with, replacement);
        QTRY_COMPARE(list->model()->rowCount(), 5);
    }

    QStringList Column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            texts.append(list->model()->index(row, column).data().toString());
        return texts;
    }
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        const QModelIndex index = list->model()->index(row, 2);
        list->scrollTo(index);
        // The pane may still be on its way to its size.
        QTRY_VERIFY(list->viewport()->rect().contains(list->visualRect(index)));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, list->visualRect(index).center());
    }
    QString Text(int process, const QString& id, const QString& argument = QStringLiteral("text")) const
    {
        return app->GetProcessDataManager()->GetProcess(process)->Find(id)->GetArgument(argument);
    }
    QString CurrentId() const { return view->currentIndex().data(Qt::UserRole).toString(); }

    QWidget* pane;
    QTreeView* list;
    QLineEdit* text;
    QLineEdit* with;
    QPushButton* all;
    QPushButton* chosen;
};

constexpr Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;
} // namespace

// Finding and replacing in all processes.
class tst_ProcessFindPane : public QObject
{
    Q_OBJECT

private slots:
    void listsThePlacesOfAllProcesses();
    void looksWhereTheAuthorWants();
    void goesToAPlace();
    void followsWhatIsEdited();
    void showsWhatWouldStandThere();
    void replacesAllInOneStep();
    void replacesOnlyTheChosenOnes();
    void leavesWhatMustNotBeReplaced();
    void replacesNothingByEnter();
    void showsOnlyTheAppThatIsShown();
};

void tst_ProcessFindPane::listsThePlacesOfAllProcesses()
{
    Finding finding;
    QVERIFY(!finding.pane->isVisible());

    finding.Open(Qt::Key_F, controlShift);

    QTRY_COMPARE(finding.list->model()->rowCount(), 5);
    QCOMPARE(finding.Column(0),
             (QStringList{QStringLiteral("主流程"), QStringLiteral("主流程"), QStringLiteral("主流程"),
                          QStringLiteral("子流程"), QStringLiteral("子流程")}));
    QCOMPARE(finding.Column(1), (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("2"),
                                             QStringLiteral("1"), QStringLiteral("1")}));
    QCOMPARE(finding.Column(3),
             (QStringList{QStringLiteral("内容"), QStringLiteral("内容"), QStringLiteral("备注"),
                          QStringLiteral("文件"), QStringLiteral("内容")}));
    QCOMPARE(finding.pane->findChild<QLabel*>(QStringLiteral("labelFindEverywhere"))->text(),
             QStringLiteral("共 5 处"));
    QVERIFY(finding.list->isColumnHidden(5));
    QVERIFY(!finding.with->isVisible());

    QTest::keyClick(finding.text, Qt::Key_Escape);
    QVERIFY(!finding.pane->isVisible());
    QVERIFY(finding.view->hasFocus());
}

void tst_ProcessFindPane::looksWhereTheAuthorWants()
{
    Finding finding;
    finding.Open(Qt::Key_F, controlShift);
    const auto toggle = [&finding](const char* name) {
        auto* box = finding.pane->findChild<QCheckBox*>(QLatin1String(name));
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
    };
    toggle("checkBoxFindNotes");
    QTRY_COMPARE(finding.list->model()->rowCount(), 4);
    toggle("checkBoxFindTexts");
    QTRY_COMPARE(finding.Column(4),
                 (QStringList{QStringLiteral("=订单号 + \"号\""), QStringLiteral("订单号")}));
    toggle("checkBoxFindWord");
    QTRY_COMPARE(finding.list->model()->rowCount(), 0);
    toggle("checkBoxFindWord");
    toggle("checkBoxFindNames");
    toggle("checkBoxFindTexts");
    QTRY_COMPARE(finding.Column(4), (QStringList{QStringLiteral("订单来了"), QStringLiteral("订单.txt")}));
    finding.text->setFocus();
    finding.text->selectAll();
    Type(finding.text, QStringLiteral("TXT"));
    QTRY_COMPARE(finding.list->model()->rowCount(), 1);
    toggle("checkBoxFindCase");
    QTRY_COMPARE(finding.list->model()->rowCount(), 0);
}

void tst_ProcessFindPane::goesToAPlace()
{
    Finding finding;
    finding.Open(Qt::Key_F, controlShift);
    QTRY_COMPARE(finding.list->model()->rowCount(), 5);

    QTest::keyClick(finding.text, Qt::Key_Return);
    QCOMPARE(finding.CurrentId(), QStringLiteral("p"));
    QTest::keyClick(finding.text, Qt::Key_Return, Qt::ShiftModifier); // around the end
    QCOMPARE(finding.widget.GetShownProcess(), QStringLiteral("子流程"));
    QCOMPARE(finding.CurrentId(), QStringLiteral("s"));
    QVERIFY(finding.text->hasFocus());

    finding.list->setFocus();
    QTest::keyClick(finding.list, Qt::Key_Home);
    QTest::keyClick(finding.list, Qt::Key_Down);
    QCOMPARE(finding.CurrentId(), QStringLiteral("q"));
    QVERIFY(finding.list->hasFocus());
    QTest::keyClick(finding.list, Qt::Key_Return);
    QVERIFY(finding.view->hasFocus());

    finding.ClickRow(3);
    QCOMPARE(finding.CurrentId(), QStringLiteral("s"));
    QTest::mouseDClick(finding.list->viewport(), Qt::LeftButton, {},
                       finding.list->visualRect(finding.list->model()->index(3, 2)).center());
    QVERIFY(finding.view->hasFocus());
}

void tst_ProcessFindPane::followsWhatIsEdited()
{
    Finding finding;
    finding.Open(Qt::Key_F, controlShift);
    QTRY_COMPARE(finding.list->model()->rowCount(), 5);

    finding.Click(QStringLiteral("q"));
    finding.Key(Qt::Key_Delete);
    QTRY_COMPARE(finding.list->model()->rowCount(), 3);
    finding.Key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_COMPARE(finding.list->model()->rowCount(), 5);
}

void tst_ProcessFindPane::showsWhatWouldStandThere()
{
    Finding finding;

    finding.OpenToReplace(QStringLiteral("票"));

    QVERIFY(!finding.list->isColumnHidden(5));
    QTRY_COMPARE(finding.Column(5),
                 (QStringList{QStringLiteral("票来了"), QStringLiteral("=票号 + \"号\""),
                              QStringLiteral("看票"), QStringLiteral("票.txt"), QStringLiteral("票号")}));
    QVERIFY(!finding.app->GetModified());
}

void tst_ProcessFindPane::replacesAllInOneStep()
{
    Finding finding;
    finding.OpenToReplace(QStringLiteral("票"));
    const ToastWatcher toasts;

    QTest::mouseClick(finding.all, Qt::LeftButton);

    QCOMPARE(finding.Text(0, QStringLiteral("p")), QStringLiteral("票来了"));
    QCOMPARE(finding.Text(0, QStringLiteral("q")), QStringLiteral("=票号 + \"号\""));
    QCOMPARE(finding.Text(1, QStringLiteral("s"), QStringLiteral("path")), QStringLiteral("票.txt"));
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("已修改 3 个语句")});
    QCOMPARE(finding.list->model()->rowCount(), 0);
    QVERIFY(finding.app->GetModified());

    finding.view->setFocus();
    finding.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(finding.Text(0, QStringLiteral("p")), QStringLiteral("订单来了"));
    QCOMPARE(finding.Text(1, QStringLiteral("s"), QStringLiteral("path")), QStringLiteral("订单.txt"));
    QVERIFY(!finding.app->GetModified());
    finding.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(
        finding.app->GetProcessDataManager()->GetProcess(1)->Find(QStringLiteral("s"))->GetValues().output,
        QStringLiteral("票号"));
}

void tst_ProcessFindPane::replacesOnlyTheChosenOnes()
{
    Finding finding;
    finding.OpenToReplace(QStringLiteral("票"));
    QVERIFY(!finding.chosen->isEnabled());
    finding.ClickRow(0);
    finding.ClickRow(3, Qt::ControlModifier);

    QTest::mouseClick(finding.chosen, Qt::LeftButton);

    QCOMPARE(finding.Text(0, QStringLiteral("p")), QStringLiteral("票来了"));
    QCOMPARE(finding.Text(0, QStringLiteral("q")), QStringLiteral("=订单号 + \"号\""));
    QCOMPARE(finding.Text(1, QStringLiteral("s"), QStringLiteral("path")), QStringLiteral("票.txt"));
    QCOMPARE(finding.list->model()->rowCount(), 3);
    finding.view->setFocus();
    finding.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(finding.Text(0, QStringLiteral("p")), QStringLiteral("订单来了"));
    QCOMPARE(finding.Text(1, QStringLiteral("s"), QStringLiteral("path")), QStringLiteral("订单.txt"));
}

void tst_ProcessFindPane::leavesWhatMustNotBeReplaced()
{
    Finding finding;
    finding.OpenToReplace(QStringLiteral("1"));
    const ToastWatcher toasts;
    QTRY_COMPARE(finding.Column(5).last(), QStringLiteral("不替换：“1号”不能作为变量名"));

    QTest::mouseClick(finding.all, Qt::LeftButton);

    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("已修改 3 个语句，2 处没有替换，原因见列表")});
    QCOMPARE(finding.Text(0, QStringLiteral("p")), QStringLiteral("1来了"));
    QCOMPARE(finding.Text(0, QStringLiteral("q")), QStringLiteral("=订单号 + \"号\""));
    QCOMPARE(finding.list->model()->rowCount(), 2);
}

void tst_ProcessFindPane::replacesNothingByEnter()
{
    Finding finding;
    finding.OpenToReplace(QStringLiteral("票"));

    QTest::keyClick(finding.with, Qt::Key_Return);

    QVERIFY(!finding.app->GetModified());
    QCOMPARE(finding.CurrentId(), QStringLiteral("r"));
}

void tst_ProcessFindPane::showsOnlyTheAppThatIsShown()
{
    Finding finding;
    finding.Open(Qt::Key_F, controlShift);
    QTRY_COMPARE(finding.list->model()->rowCount(), 5);

    finding.widget.SetRpaAppData(nullptr);
    QTRY_COMPARE(finding.list->model()->rowCount(), 0);
    QTest::keyClick(finding.text, Qt::Key_Return); // there is nothing to go to
    QVERIFY(finding.pane->isVisible());

    finding.widget.SetRpaAppData(App({Calling(QStringLiteral("n"), QStringLiteral("新订单"))}));
    QTRY_COMPARE(finding.Column(4), QStringList{QStringLiteral("新订单")});
}

RPA_TEST_MAIN(tst_ProcessFindPane)

#include "tst_processfindpane.moc"
