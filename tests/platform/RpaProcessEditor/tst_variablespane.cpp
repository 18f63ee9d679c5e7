// SPDX-License-Identifier: Apache-2.0

#include "DebugPanesFixture.h"
#include "TestApp.h"

#include <QLabel>
#include <QLineEdit>
#include <QTreeView>

using namespace EditorFixture;

// The variables of a stopped program.
class tst_VariablesPane : public QObject, protected DebugPanesFixture
{
    Q_OBJECT

private slots:
    void init() { Begin(); }
    void cleanup() { End(); }

    void showVariablesOfTheStop();
    void passOverScopesOfAnEarlierStop();
    void openAgainWhatWasOpen();
    void loadTheNextPageWithAClick();
    void changeAValueByKeyboard();
    void sayWhyAValueIsRefused();
    void findVariables();

private:
    QModelIndex Local(int row, int column = 0) const;
};

QModelIndex tst_VariablesPane::Local(int row, int column) const
{
    const QAbstractItemModel* model = Find<QTreeView>("variableView")->model();
    return model->index(row, column, model->index(0, 0));
}

void tst_VariablesPane::showVariablesOfTheStop()
{
    StopWith({Scripted::Value(QStringLiteral("n"), QStringLiteral("1"))});
    QCOMPARE(Local(0).data().toString(), QStringLiteral("n"));
    QCOMPARE(Local(0, 1).data().toString(), QStringLiteral("1"));
    QCOMPARE(source->Asked(QStringLiteral("scopes")).frame, 0);
}

void tst_VariablesPane::passOverScopesOfAnEarlierStop()
{
    Stop();
    const int late = source->Asked(QStringLiteral("scopes")).request;
    source->Resume();
    StopWith({Scripted::Value(QStringLiteral("n"), QStringLiteral("1"))});

    source->Answer(late, {Scripted::Heading(QStringLiteral("old"), 9, 1)});
    source->Answer(source->Asked(QStringLiteral("scopes")).request, {}); // a second time

    QCOMPARE(Local(0).data().toString(), QStringLiteral("n"));
}

void tst_VariablesPane::openAgainWhatWasOpen()
{
    const auto list = Scripted::Value(QStringLiteral("list"), QStringLiteral("[1]"), 7, 1);
    StopWith({list});
    auto* view = Find<QTreeView>("variableView");
    view->setFocus();
    view->setCurrentIndex(Local(0));
    QTest::keyClick(view, Qt::Key_Right);
    QCOMPARE(source->Asked(QStringLiteral("children")).handle, 7);

    source->Resume();
    StopWith({list});

    QCOMPARE(source->Asked(QStringLiteral("children")).handle, 7);
    source->Answer(source->Asked(QStringLiteral("children")).request,
                   {Scripted::Value(QStringLiteral("[0]"), QStringLiteral("1"))});
    QVERIFY(view->isExpanded(Local(0)));
    QCOMPARE(view->model()->index(0, 1, Local(0)).data().toString(), QStringLiteral("1"));
}

void tst_VariablesPane::loadTheNextPageWithAClick()
{
    StopWith({Scripted::Value(QStringLiteral("a"), QStringLiteral("1"))}, 3);
    QCOMPARE(Local(1).data().toString(), QStringLiteral("还有 2 项…"));

    ClickRow(Find<QTreeView>("variableView"), Local(1));

    QCOMPARE(source->Asked(QStringLiteral("children")).first, 1);
}

void tst_VariablesPane::changeAValueByKeyboard()
{
    StopWith({Scripted::Value(QStringLiteral("n"), QStringLiteral("1"))});
    auto* view = Find<QTreeView>("variableView");
    view->setFocus();
    ClickRow(view, Local(0));
    QTest::keyClick(view, Qt::Key_Return);
    auto* edit = view->findChild<QLineEdit*>();
    QVERIFY(edit);
    edit->selectAll();
    Type(edit, QStringLiteral("n + 4"));
    QTest::keyClick(edit, Qt::Key_Return);

    QTRY_COMPARE(source->Asked(QStringLiteral("set")).text, QStringLiteral("n=n + 4"));
    const Scripted::Question asked = source->Asked(QStringLiteral("set"));
    const int scopes = source->Asked(QStringLiteral("scopes")).request;
    source->Answer(asked.request, {Scripted::Value(QStringLiteral("n"), QStringLiteral("5"))});

    // Everything is asked for anew.
    QVERIFY(source->Asked(QStringLiteral("scopes")).request > scopes);
}

void tst_VariablesPane::sayWhyAValueIsRefused()
{
    StopWith({Scripted::Value(QStringLiteral("n"), QStringLiteral("1"))});
    auto* view = Find<QTreeView>("variableView");
    ClickRow(view, Local(0));
    QTest::keyClick(view, Qt::Key_Return);
    auto* edit = view->findChild<QLineEdit*>();
    QVERIFY(edit);
    edit->selectAll();
    Type(edit, QStringLiteral("1/0"));
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_COMPARE(source->Asked(QStringLiteral("set")).text, QStringLiteral("n=1/0"));
    source->Refuse(source->Asked(QStringLiteral("set")).request, QStringLiteral("ZeroDivisionError"));

    QVERIFY(Find<QLabel>("labelProblem")->isVisible());
    QCOMPARE(Local(0, 1).data().toString(), QStringLiteral("1"));
}

void tst_VariablesPane::findVariables()
{
    StopWith({Scripted::Value(QStringLiteral("姓名"), QStringLiteral("'张三'")),
              Scripted::Value(QStringLiteral("n"), QStringLiteral("1"))});
    Type(Find<QLineEdit>("lineEditSearch"), QStringLiteral("张"));
    QCOMPARE(Local(0).data().toString(), QStringLiteral("姓名"));
    QVERIFY(!Local(1).isValid());
}

RPA_TEST_MAIN(tst_VariablesPane)
#include "tst_variablespane.moc"
