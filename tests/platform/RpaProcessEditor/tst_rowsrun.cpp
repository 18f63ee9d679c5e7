// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

// What an author builds from rows, grids and variables is what the engine runs.
class RowsRun : public QObject
{
    Q_OBJECT

private slots:
    void aProcessBuiltWithoutPythonRuns();
};

namespace
{
RpaStatement Make(const char* command, const char* id, const char* output = "",
                  const QVector<RpaStatement>& children = {})
{
    RpaStatement statement = EditorFixture::Statement(QLatin1String(command), QLatin1String(id), children);
    statement.output = QString::fromUtf8(output);
    return statement;
}

void TypeValue(const QWidget* row, const char* side, const QString& text)
{
    auto* edit = row->findChild<QWidget*>(QLatin1String(side))->findChild<QTextEdit*>();
    QTest::mouseClick(edit->viewport(), Qt::LeftButton);
    EditorFixture::Type(edit, text);
}

void Choose(QComboBox* combo, const QString& title)
{
    combo->setFocus();
    for (int i = 0; i < combo->count() && combo->currentText() != title; ++i)
        QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentText(), title);
}
} // namespace

void RowsRun::aProcessBuiltWithoutPythonRuns()
{
    RpaStatement log = Make("log", "log");
    log.arguments.insert(QStringLiteral("level"), QStringLiteral("info"));
    EditorFixture::Editor editor({Make("list.create", "list", "姓名列"),
                                  Make("loop.list", "loop", "姓名", {Make("if", "if", "", {log})})});

    // The list: three names, a cell each.
    editor.Click(QStringLiteral("list"));
    auto* grid = editor.Find<QTableWidget>(QStringLiteral("valueGrid"));
    for (const QString& name : {QStringLiteral("张伟"), QStringLiteral("李\"娜"), QStringLiteral("张芳")}) {
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_F2);
        auto* cell = grid->findChild<QTextEdit*>(QStringLiteral("cellEdit"));
        EditorFixture::Type(cell, name);
        QTest::keyClick(cell, Qt::Key_Return);
        QTRY_VERIFY(!grid->findChild<QTextEdit*>(QStringLiteral("cellEdit")));
        if (name != QStringLiteral("张芳"))
            QTest::keyClick(grid, Qt::Key_Return, Qt::ControlModifier);
    }
    editor.Click(QStringLiteral("loop"));
    EditorFixture::Type(editor.Field<QWidget>(QStringLiteral("list")), QStringLiteral("姓名列"));

    // The condition: begins with 张, or contains a quote; but no 芳.
    editor.Click(QStringLiteral("if"));
    const auto row = [&editor](int index) {
        return editor.Find<QWidget>(QStringLiteral("field_condition"))
            ->findChildren<QWidget*>(QStringLiteral("conditionRow"))
            .at(index);
    };
    TypeValue(row(0), "leftValue", QStringLiteral("姓名"));
    Choose(row(0)->findChild<QComboBox*>(QStringLiteral("comparisonCombo")), QStringLiteral("开头是"));
    TypeValue(row(0), "rightValue", QStringLiteral("张"));
    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("addRow")), Qt::LeftButton);
    TypeValue(row(1), "leftValue", QStringLiteral("姓名"));
    Choose(row(1)->findChild<QComboBox*>(QStringLiteral("comparisonCombo")), QStringLiteral("不包含"));
    TypeValue(row(1), "rightValue", QStringLiteral("芳"));

    // The text: a variable between words.
    editor.Click(QStringLiteral("log"));
    EditorFixture::Type(editor.Field<QWidget>(QStringLiteral("text")), QStringLiteral("你好"));
    editor.Field<QWidget>(QStringLiteral("text"))->setFocus();
    QTest::keyClick(editor.Field<QWidget>(QStringLiteral("text")), Qt::Key_Space, Qt::ControlModifier);
    QTRY_VERIFY(QApplication::activePopupWidget());
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QAction* name = menu->actions().first();
    QCOMPARE(name->text(), QStringLiteral("姓名"));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(name).center());
    QTRY_VERIFY(editor.Field<QTextEdit>(QStringLiteral("text")));
    EditorFixture::Type(editor.Field<QTextEdit>(QStringLiteral("text")), QStringLiteral("。"));

    EngineRunFixture engine;
    QVERIFY(engine.RunStatements(EditorFixture::Main(editor.app)->GetStatements()));
    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(engine.LogHas(QStringLiteral("你好张伟。")),
             qPrintable(engine.LogTexts().join(QLatin1Char('\n'))));
    QVERIFY(!engine.LogHas(QStringLiteral("娜")));
    QVERIFY(!engine.LogHas(QStringLiteral("张芳")));
}

RPA_TEST_MAIN(RowsRun)

#include "tst_rowsrun.moc"
