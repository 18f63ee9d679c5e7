// SPDX-License-Identifier: Apache-2.0

#include "DebugPanesFixture.h"
#include "TestApp.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>

using namespace EditorFixture;

// Expressions that are watched, or computed once.
class tst_WatchesPane : public QObject, protected DebugPanesFixture
{
    Q_OBJECT

private slots:
    void init() { Begin(); }
    void cleanup() { End(); }

    void watchExpressions();
    void watchInTheChosenCall();
    void evaluateOnce();
    void forgetAWatch();

private:
    void TypeExpression(const QString& text, const char* button);
    QString Watched(int row, int column = 1) const;
};

void tst_WatchesPane::TypeExpression(const QString& text, const char* button)
{
    auto* edit = Find<QLineEdit>("lineEditExpression");
    edit->selectAll();
    Type(edit, text);
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
}

QString tst_WatchesPane::Watched(int row, int column) const
{
    return Find<QTreeView>("watchView")->model()->index(row, column).data().toString();
}

void tst_WatchesPane::watchExpressions()
{
    OpenTab(WatchesTab);
    TypeExpression(QStringLiteral("n + 1"), "buttonWatch");
    TypeExpression(QStringLiteral("nothing"), "buttonWatch");
    TypeExpression(QStringLiteral("n + 1"), "buttonWatch"); // again
    QCOMPARE(source->watches, (QStringList{QStringLiteral("n + 1"), QStringLiteral("nothing")}));
    QCOMPARE(Watched(0, 0), QStringLiteral("n + 1"));
    QCOMPARE(Watched(0), QString());

    StopWith({});
    RpaDebugValue wrong;
    wrong.error = QStringLiteral("NameError");
    emit source->SigWatches({Scripted::Value(QString(), QStringLiteral("8")), wrong});
    QCOMPARE(Watched(0), QStringLiteral("8"));
    QCOMPARE(Watched(1), QStringLiteral("NameError"));
    emit source->SigWatches({Scripted::Value(QString(), QStringLiteral("9"))}); // of a shorter list
    QCOMPARE(Watched(0), QStringLiteral("8"));

    source->Resume();
    QCOMPARE(Watched(0), QString());
    QCOMPARE(Watched(0, 0), QStringLiteral("n + 1"));
}

void tst_WatchesPane::watchInTheChosenCall()
{
    OpenTab(WatchesTab);
    TypeExpression(QStringLiteral("n"), "buttonWatch");
    StopWith({});
    emit source->SigWatches({Scripted::Value(QString(), QStringLiteral("1"))});

    focus->Choose(1);
    QCOMPARE(Watched(0), QString());
    const Scripted::Question asked = source->Asked(QStringLiteral("evaluate"));
    QCOMPARE(asked.frame, 1);
    emit source->SigWatches({Scripted::Value(QString(), QStringLiteral("1"))}); // of the innermost
    QCOMPARE(Watched(0), QString());
    source->Answer(asked.request, {Scripted::Value(QString(), QStringLiteral("2"))});
    QCOMPARE(Watched(0), QStringLiteral("2"));
}

void tst_WatchesPane::evaluateOnce()
{
    OpenTab(WatchesTab);
    QVERIFY(!Find<QPushButton>("buttonOnce")->isEnabled());
    StopWith({});
    TypeExpression(QStringLiteral("len(x)"), "buttonOnce");
    const Scripted::Question asked = source->Asked(QStringLiteral("evaluate"));
    QCOMPARE(asked.text, QStringLiteral("len(x)"));
    source->Answer(asked.request, {Scripted::Value(QString(), QStringLiteral("3"))});
    source->Answer(asked.request, {Scripted::Value(QString(), QStringLiteral("4"))}); // doubled
    QCOMPARE(Watched(0, 0), QStringLiteral("len(x)"));
    QCOMPARE(Watched(0), QStringLiteral("3"));
    QVERIFY(source->watches.isEmpty());

    source->Resume();
    QCOMPARE(Find<QTreeView>("watchView")->model()->rowCount(), 0);
}

void tst_WatchesPane::forgetAWatch()
{
    OpenTab(WatchesTab);
    TypeExpression(QStringLiteral("a"), "buttonWatch");
    TypeExpression(QStringLiteral("b"), "buttonWatch");
    TypeExpression(QStringLiteral("c"), "buttonWatch");
    auto* view = Find<QTreeView>("watchView");
    ClickRow(view, view->model()->index(0, 0));
    QTest::keyClick(view, Qt::Key_Delete);
    QTest::keyClick(view, Qt::Key_Delete); // the next one
    QCOMPARE(source->watches, QStringList(QStringLiteral("c")));
    QCOMPARE(Watched(0, 0), QStringLiteral("c"));

    const QPoint place = view->visualRect(view->model()->index(0, 0)).center();
    QTest::mouseClick(view->viewport(), Qt::RightButton, {}, place);
    QTimer::singleShot(0, this, [] { // while the menu waits
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().first()).center());
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(view->viewport(), &event);
    QCOMPARE(source->watches, QStringList());
}

RPA_TEST_MAIN(tst_WatchesPane)
#include "tst_watchespane.moc"
