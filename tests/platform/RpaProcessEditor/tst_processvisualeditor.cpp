// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <OxBase/OxBlocker.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>

#include <QAction>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

using namespace EditorFixture;

// The editor as a whole: its app, its room, and saving.
class tst_ProcessVisualEditor : public QObject
{
    Q_OBJECT

private slots:
    void opensTheMainProcessWithoutMarkingTheApp();
    void saysWhatToDoFirst();
    void isEmptyWithoutAnApp();
    void forgetsUndoWithAnotherApp();
    void followsAModelThatIsReadAnew();
    void keepsToolsAndTabNamesWholeBesideTheBrowser();
    void movesTheToolsBelowTheTabsRatherThanHideATab();
    void asksToSaveOnControlS();
    void asksForNoSaveWhileABlockingSaveWaits();
    void keepsStatementsOfUnknownCommands();
};

void tst_ProcessVisualEditor::opensTheMainProcessWithoutMarkingTheApp()
{
    Editor editor;

    QCOMPARE(editor.view->model()->rowCount(), 3);
    QVERIFY(editor.IndexOf(QStringLiteral("d")).isValid());
    QVERIFY(editor.view->visualRect(editor.IndexOf(QStringLiteral("d"))).isValid()); // opened
    QVERIFY(!editor.app->GetModified());
}

void tst_ProcessVisualEditor::saysWhatToDoFirst()
{
    Editor empty(noStatements);
    const QImage withHint = empty.view->viewport()->grab().toImage();
    empty.widget.SetRpaAppData(nullptr);

    QVERIFY(empty.view->viewport()->grab().toImage() != withHint);
}

void tst_ProcessVisualEditor::isEmptyWithoutAnApp()
{
    Editor editor;

    editor.widget.SetRpaAppData(nullptr);
    editor.Key(Qt::Key_Return);
    editor.Key(Qt::Key_Delete);
    editor.widget.SwitchMainPage();
    QList<RpaCheckInfo> list;

    QVERIFY(!editor.widget.CheckComment(list));
    QCOMPARE(editor.view->model()->rowCount(), 0);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
}

void tst_ProcessVisualEditor::forgetsUndoWithAnotherApp()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    const RpaAppDataPtr other = App(SomeStatements());

    editor.widget.SetRpaAppData(other);
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(editor.Shown(), QStringLiteral("b(c d) e"));
    QVERIFY(!other->GetModified());
}

void tst_ProcessVisualEditor::followsAModelThatIsReadAnew()
{
    Editor editor;
    const RpaAppDataPtr other = App({Log(QStringLiteral("n"))});

    QVERIFY(editor.app->GetProcessDataManager()->Parse(other->GetProcessDataManager()->ToJson()));

    QCOMPARE(editor.view->model()->rowCount(), 1);
    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("n"));
}

void tst_ProcessVisualEditor::keepsToolsAndTabNamesWholeBesideTheBrowser()
{
    Editor editor;
    for (const char* name : {"读取每日工时", "汇总到报表", "发送通知邮件"})
        editor.app->GetProcessDataManager()->AddProcess(QString::fromUtf8(name));

    editor.widget.resize(760, 480);

    const auto* bar = editor.Find<QWidget>(QStringLiteral("processToolBar"));
    const QList<QToolButton*> tools = bar->findChildren<QToolButton*>();
    QCOMPARE(tools.size(), 10);
    for (const QToolButton* tool : tools) {
        QTRY_VERIFY2(bar->rect().contains(tool->geometry()), qPrintable(tool->objectName()));
        QTRY_VERIFY(tool->width() >= tool->sizeHint().width());
    }
    auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    for (int i = 0; i < tabs->count(); ++i)
        QVERIFY(tabs->tabRect(i).width() > tabs->fontMetrics().horizontalAdvance(tabs->tabText(i)));
    tabs->setCurrentIndex(tabs->count() - 1);
    QTRY_VERIFY(tabs->rect().contains(tabs->tabRect(tabs->count() - 1).center()));
    const QRect view(editor.view->mapTo(&editor.widget, QPoint(0, 0)), editor.view->size());
    QVERIFY(editor.widget.rect().contains(view));
}

void tst_ProcessVisualEditor::movesTheToolsBelowTheTabsRatherThanHideATab()
{
    Editor editor;
    editor.widget.resize(1240, 480);
    const auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    const auto* bar = editor.Find<QWidget>(QStringLiteral("processToolBar"));
    const auto topOf = [&editor](const QWidget* part) { return part->mapTo(&editor.widget, QPoint()).y(); };
    QTRY_VERIFY(topOf(bar) < topOf(tabs) + tabs->height());

    for (const char* name : {"读取每日工时", "汇总到报表", "发送通知邮件", "整理附件"})
        editor.app->GetProcessDataManager()->AddProcess(QString::fromUtf8(name));

    QTRY_VERIFY(topOf(bar) >= topOf(tabs) + tabs->height());
    QTRY_VERIFY(tabs->rect().contains(tabs->tabRect(0)));
    QVERIFY(tabs->rect().contains(tabs->tabRect(tabs->count() - 1)));
}

void tst_ProcessVisualEditor::asksToSaveOnControlS()
{
    Editor editor;
    QSignalSpy saves(&editor.widget, &ProcessVisualEditorWidget::SigSaveCode);

    editor.Key(Qt::Key_S, Qt::ControlModifier);
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    QTest::keyClick(text, Qt::Key_S, Qt::ControlModifier);

    QCOMPARE(saves.count(), 2);
}

void tst_ProcessVisualEditor::asksForNoSaveWhileABlockingSaveWaits()
{
    Editor editor;
    QSignalSpy saves(&editor.widget, &ProcessVisualEditorWidget::SigSaveCode);
    OxBlocker blocker;
    bool wasBlocking = false;
    QTimer::singleShot(0, &blocker, [&] {
        wasBlocking = OxBlocker::IsBlocking();
        editor.Find<QAction>(QStringLiteral("actionSave"))->trigger();
        blocker.Continue();
    });

    blocker.Block(5000);

    QVERIFY(wasBlocking);
    QCOMPARE(saves.count(), 0);
}

void tst_ProcessVisualEditor::keepsStatementsOfUnknownCommands()
{
    RpaStatement strange =
        Statement(QStringLiteral("from-the-future"), QStringLiteral("f"), {Log(QStringLiteral("g"))});
    strange.arguments.insert(QStringLiteral("x"), QStringLiteral("1"));
    Editor editor({strange});

    editor.Click(QStringLiteral("f"));
    editor.Key(Qt::Key_D, Qt::ControlModifier);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChildCount(), 2);
    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetArgument(QStringLiteral("x")), QStringLiteral("1"));
    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetChildCount(), 1);
}

RPA_TEST_MAIN(tst_ProcessVisualEditor)

#include "tst_processvisualeditor.moc"
