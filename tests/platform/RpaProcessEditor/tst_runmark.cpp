// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

#include <QScrollBar>
#include <QTest>
#include <QTreeView>

#include <functional>

using namespace EditorFixture;

namespace
{
void TellEngine(const std::function<void(IProcessLifeCycle*)>& call)
{
    RpaProcessLifeCycleManager::Instance()->ForEach(call);
}
} // namespace

class tst_RunMark : public QObject
{
    Q_OBJECT

private slots:
    void marksTheStatementThatRuns();
    void marksTheRunWithoutScrollingAway();
};

void tst_RunMark::marksTheStatementThatRuns()
{
    Editor editor({Log(QStringLiteral("a")), Log(QStringLiteral("c")), Log(QStringLiteral("e"))});
    editor.Click(QStringLiteral("a"));
    const auto isMarked = [&editor](const QString& id) {
        return editor.IndexOf(id)
            .data(Qt::AccessibleTextRole)
            .toString()
            .contains(QStringLiteral("正在运行"));
    };

    TellEngine([](IProcessLifeCycle* listener) { listener->ApiExecute(QStringLiteral("c")); });
    QVERIFY(isMarked(QStringLiteral("c")));
    const QImage marked = editor.view->viewport()->grab().toImage();

    TellEngine([](IProcessLifeCycle* listener) { listener->ApiExecute(QStringLiteral("e")); });
    QVERIFY(!isMarked(QStringLiteral("c")));
    QVERIFY(isMarked(QStringLiteral("e")));
    QVERIFY(editor.view->viewport()->grab().toImage() != marked);

    TellEngine([](IProcessLifeCycle* listener) { listener->EngineRelease(); });
    QVERIFY(!isMarked(QStringLiteral("e")));
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("a"));
    QVERIFY(!editor.app->GetModified());
}

void tst_RunMark::marksTheRunWithoutScrollingAway()
{
    QVector<RpaStatement> many;
    for (int i = 0; i < 100; ++i)
        many.append(Log(QStringLiteral("s%1").arg(i)));
    Editor editor(many);
    editor.Click(QStringLiteral("s0"));

    TellEngine([](IProcessLifeCycle* listener) { listener->ApiExecute(QStringLiteral("s99")); });

    QCOMPARE(editor.view->verticalScrollBar()->value(), 0);
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("s0"));
    TellEngine([](IProcessLifeCycle* listener) { listener->EngineRelease(); });
}

RPA_TEST_MAIN(tst_RunMark)
#include "tst_runmark.moc"
