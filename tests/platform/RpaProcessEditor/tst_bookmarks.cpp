// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"
#include "VisualEditorFixture.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>

#include <QTabBar>
#include <QTest>
#include <QTreeView>
#include <QUuid>

#include <memory>

using namespace EditorFixture;

namespace
{
QString Current(const Editor& editor)
{
    return editor.view->currentIndex().data(Qt::UserRole).toString();
}

bool IsMarked(const Editor& editor, const QString& id)
{
    return editor.IndexOf(id).data(Qt::AccessibleTextRole).toString().contains(QStringLiteral("有书签"));
}

void Mark(Editor& editor, const QString& id)
{
    editor.Click(id);
    editor.Key(Qt::Key_B, Qt::ControlModifier);
}

// Statements "a b(c d) e" and, in the other process, "s".
std::unique_ptr<Editor> NewEditor()
{
    auto editor = std::make_unique<Editor>();
    editor->app->GetProcessDataManager()->GetProcess(1)->SetStatements({Log(QStringLiteral("s"))});
    editor->app->SetModified(false);
    return editor;
}
} // namespace

// Bookmarks in the tree of statements.
class tst_Bookmarks : public QObject
{
    Q_OBJECT

private slots:
    void marksAndUnmarks();
    void goesFromOneToTheNextThroughAllProcesses();
    void goesOnFromAnEmptyProcess();
    void opensTheBlockOfABookmark();
    void staysWithItsStatement();
    void isKeptWithTheMachineAndNotInTheApp();
    void paintsAMark();
    void saysThatThereIsNone();
};

void tst_Bookmarks::marksAndUnmarks()
{
    const auto editor = NewEditor();
    Mark(*editor, QStringLiteral("a"));
    QVERIFY(IsMarked(*editor, QStringLiteral("a")));
    QVERIFY(!IsMarked(*editor, QStringLiteral("e")));

    // One of two is marked: both are then.
    editor->Click(QStringLiteral("e"), Qt::ControlModifier);
    editor->Key(Qt::Key_B, Qt::ControlModifier);
    QVERIFY(IsMarked(*editor, QStringLiteral("a")));
    QVERIFY(IsMarked(*editor, QStringLiteral("e")));

    editor->Key(Qt::Key_B, Qt::ControlModifier);
    QVERIFY(!IsMarked(*editor, QStringLiteral("a")));
    QVERIFY(!IsMarked(*editor, QStringLiteral("e")));
    QVERIFY(!editor->app->GetModified());
}

void tst_Bookmarks::goesFromOneToTheNextThroughAllProcesses()
{
    const auto editor = NewEditor();
    auto* bar = editor->Find<QTabBar>(QStringLiteral("processTabBar"));
    Mark(*editor, QStringLiteral("a"));
    Mark(*editor, QStringLiteral("d"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    editor->view->setFocus();
    Mark(*editor, QStringLiteral("s"));

    QStringList visited;
    for (int i = 0; i < 3; ++i) {
        editor->Key(Qt::Key_F4);
        visited.append(Current(*editor) + QString::number(bar->currentIndex()));
    }
    QCOMPARE(visited, (QStringList{QStringLiteral("a0"), QStringLiteral("d0"), QStringLiteral("s1")}));

    visited.clear();
    for (int i = 0; i < 3; ++i) {
        editor->Key(Qt::Key_F4, Qt::ShiftModifier);
        visited.append(Current(*editor) + QString::number(bar->currentIndex()));
    }
    QCOMPARE(visited, (QStringList{QStringLiteral("d0"), QStringLiteral("a0"), QStringLiteral("s1")}));
}

void tst_Bookmarks::goesOnFromAnEmptyProcess()
{
    Editor editor;
    Mark(editor, QStringLiteral("a"));
    Mark(editor, QStringLiteral("e"));
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    editor.view->setFocus();

    editor.Key(Qt::Key_F4, Qt::ShiftModifier);

    QCOMPARE(Current(editor), QStringLiteral("e"));
}

void tst_Bookmarks::opensTheBlockOfABookmark()
{
    const auto editor = NewEditor();
    Mark(*editor, QStringLiteral("d"));
    editor->Click(QStringLiteral("a"));
    editor->view->collapseAll();

    editor->Key(Qt::Key_F4);

    QCOMPARE(Current(*editor), QStringLiteral("d"));
    QVERIFY(editor->view->isExpanded(editor->IndexOf(QStringLiteral("b"), 0)));
}

void tst_Bookmarks::staysWithItsStatement()
{
    const auto editor = NewEditor();
    Mark(*editor, QStringLiteral("a"));

    editor->Key(Qt::Key_Delete);
    editor->Key(Qt::Key_F4); // there is none now
    editor->Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(IsMarked(*editor, QStringLiteral("a")));

    editor->Key(Qt::Key_I, Qt::ControlModifier); // into a block
    QVERIFY(IsMarked(*editor, QStringLiteral("a")));
}

void tst_Bookmarks::isKeptWithTheMachineAndNotInTheApp()
{
    const QString appId = QUuid::createUuid().toString();
    const RpaAppDataPtr app = App(SomeStatements());
    app->GetRunTimeInfo()->SetAppId(appId);
    const QByteArray json = app->GetProcessDataManager()->ToJson();
    auto editor = std::make_unique<Editor>();
    editor->widget.SetRpaAppData(app);
    Mark(*editor, QStringLiteral("c"));
    QCOMPARE(app->GetProcessDataManager()->ToJson(), json);
    editor.reset();

    const RpaAppDataPtr again = App(SomeStatements());
    again->GetRunTimeInfo()->SetAppId(appId);
    Editor later;
    later.widget.SetRpaAppData(again);
    QVERIFY(IsMarked(later, QStringLiteral("c")));
    QVERIFY(!IsMarked(later, QStringLiteral("a")));

    later.widget.SetRpaAppData(App(SomeStatements())); // another app
    QVERIFY(!IsMarked(later, QStringLiteral("c")));
}

void tst_Bookmarks::paintsAMark()
{
    const auto editor = NewEditor();
    editor->Click(QStringLiteral("a"));
    const auto grab = [&editor] {
        return editor->view->viewport()
            ->grab(editor->view->visualRect(editor->IndexOf(QStringLiteral("a"))))
            .toImage();
    };
    const QImage before = grab();

    editor->Key(Qt::Key_B, Qt::ControlModifier);
    QVERIFY(grab() != before);

    editor->Key(Qt::Key_B, Qt::ControlModifier);
    QCOMPARE(grab(), before);
}

void tst_Bookmarks::saysThatThereIsNone()
{
    const auto editor = NewEditor();
    const ToastWatcher toasts;

    editor->Key(Qt::Key_F4);

    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("还没有书签，按 Ctrl+B 设置")});
}

RPA_TEST_MAIN(tst_Bookmarks)

#include "tst_bookmarks.moc"
