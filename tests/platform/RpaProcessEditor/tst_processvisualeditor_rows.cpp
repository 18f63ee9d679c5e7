// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "TextFit.h"
#include "VisualEditorFixture.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScopeGuard>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeView>
#include <QtMath>

using namespace EditorFixture;

// Conditions as rows: built, changed and moved by mouse and by keys.
class tst_ProcessVisualEditorRows : public QObject
{
    Q_OBJECT

private slots:
    void buildsAConditionWithoutPython();
    void picksAVariableByKeys();
    void takesATypedNameForTheVariable();
    void addsRemovesAndMovesRowsByMouse();
    void addsRemovesAndMovesRowsByKeys();
    void walksThroughRowsByTab();
    void fitsAtEveryScale_data();
    void fitsAtEveryScale();
    void undoesAWholeRow();
    void showsRowsOfAnOldCondition();
    void switchesToPythonAndBack();
    void saysWhyRowsCannotShowIt();
    void saysWhichRowIsIncomplete();
    void leavesUntouchedPythonAsItIs();
};

namespace
{
RpaStatement If(const QString& condition)
{
    RpaStatement statement = Statement(QStringLiteral("if"), QStringLiteral("i"));
    statement.arguments.insert(QStringLiteral("condition"), condition);
    return statement;
}

RpaStatement Set(const QString& variable)
{
    RpaStatement statement = Statement(QStringLiteral("t-set"), QStringLiteral("set ") + variable);
    statement.arguments.insert(QStringLiteral("variable"), variable);
    statement.arguments.insert(QStringLiteral("value"), QStringLiteral("1"));
    return statement;
}

struct Rows : Editor
{
    explicit Rows(const QString& condition = QString())
        : Editor({Set(QStringLiteral("数量")), Set(QStringLiteral("状态")), If(condition)})
    {
        Click(QStringLiteral("i"));
    }

    QWidget* Field() const { return widget.findChild<QWidget*>(QStringLiteral("field_condition")); }
    QList<QWidget*> All() const
    {
        QList<QWidget*> rows;
        const auto found = Field()->findChildren<QWidget*>(QStringLiteral("conditionRow"));
        for (QWidget* row : found)
            if (row->isVisibleTo(Field()))
                rows.append(row);
        return rows;
    }
    template <typename Widget>
    Widget* In(int row, const char* name) const
    {
        return All().at(row)->findChild<Widget*>(QLatin1String(name));
    }
    QTextEdit* Left(int row) const { return Value(row, "leftValue"); }
    QTextEdit* Right(int row) const { return Value(row, "rightValue"); }
    QTextEdit* Value(int row, const char* side) const
    {
        return In<QWidget>(row, side)->findChild<QTextEdit*>(QStringLiteral("valueEdit"));
    }
    void Type(QTextEdit* edit, const QString& text) const
    {
        QTest::mouseClick(edit->viewport(), Qt::LeftButton);
        EditorFixture::Type(edit, text);
    }
    void Compare(int row, const QString& title) const
    {
        auto* combo = In<QComboBox>(row, "comparisonCombo");
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Home);
        while (combo->currentText() != title) {
            const int before = combo->currentIndex();
            QTest::keyClick(combo, Qt::Key_Down);
            QVERIFY2(combo->currentIndex() > before, qPrintable(title));
        }
    }
    void Press(QWidget* button) const { QTest::mouseClick(button, Qt::LeftButton); }
    void PressAdd() const { Press(Field()->findChild<QToolButton*>(QStringLiteral("addRow"))); }
    void PressPython() const { Press(Field()->findChild<QToolButton*>(QStringLiteral("pythonButton"))); }
    QString Stored() const { return Node(QStringLiteral("i"))->GetArgument(QStringLiteral("condition")); }
    QString Label(const char* name) const
    {
        const auto* label = Field()->findChild<QLabel*>(QLatin1String(name));
        return label->isVisible() ? label->text() : QString();
    }
};

// The text of a value with "{}" for each piece.
QString Shown(const QTextEdit* edit)
{
    return edit->toPlainText().replace(QChar::ObjectReplacementCharacter, QLatin1String("{}"));
}
} // namespace

void tst_ProcessVisualEditorRows::buildsAConditionWithoutPython()
{
    Rows editor;
    QCOMPARE(editor.All().size(), 1);
    editor.Key(Qt::Key_F2);
    QVERIFY(editor.Left(0)->hasFocus());

    editor.Type(editor.Left(0), QStringLiteral("数量"));
    editor.Compare(0, QStringLiteral("大于等于"));
    editor.Type(editor.Right(0), QStringLiteral("3"));
    editor.PressAdd();
    editor.Type(editor.Left(1), QStringLiteral("状态"));
    editor.Compare(1, QStringLiteral("等于"));
    editor.Type(editor.Right(1), QStringLiteral("完成"));

    QCOMPARE(editor.Stored(), QStringLiteral("数量 >= 3 and 状态 == \"完成\""));
    QCOMPARE(editor.Label("labelProblem"), QString());

    auto* join = editor.In<QComboBox>(1, "joinCombo");
    join->setFocus();
    QTest::keyClick(join, Qt::Key_Down);
    QCOMPARE(editor.Stored(), QStringLiteral("数量 >= 3 or 状态 == \"完成\""));
}

void tst_ProcessVisualEditorRows::picksAVariableByKeys()
{
    Rows editor;
    editor.Left(0)->setFocus();

    QTest::keyClick(editor.Left(0), Qt::Key_Space, Qt::ControlModifier);
    QTRY_VERIFY(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);

    QTRY_COMPARE(Shown(editor.Left(0)), QStringLiteral("{}"));
    QVERIFY(editor.Left(0)->hasFocus());
    QCOMPARE(editor.Stored(), QStringLiteral("状态 == "));

    QTest::keyClick(editor.Left(0), Qt::Key_Backspace);
    QCOMPARE(Shown(editor.Left(0)), QString());
    QCOMPARE(editor.Stored(), QString());
}

void tst_ProcessVisualEditorRows::takesATypedNameForTheVariable()
{
    Rows editor;
    editor.Type(editor.Left(0), QStringLiteral("数量"));
    editor.Type(editor.Right(0), QStringLiteral("\"数量\""));
    editor.Left(0)->setFocus();

    QCOMPARE(Shown(editor.Left(0)), QStringLiteral("{}"));
    QCOMPARE(Shown(editor.Right(0)), QStringLiteral("\"数量\""));
    QCOMPARE(editor.Stored(), QStringLiteral("数量 == \"数量\""));
}

void tst_ProcessVisualEditorRows::addsRemovesAndMovesRowsByMouse()
{
    Rows editor(QStringLiteral("数量>1 or 状态=='a'"));
    QCOMPARE(editor.All().size(), 2);

    editor.Press(editor.In<QToolButton>(1, "rowUp"));
    QCOMPARE(editor.Stored(), QStringLiteral("状态=='a' or 数量>1"));
    editor.Press(editor.In<QToolButton>(0, "rowDown"));
    QCOMPARE(editor.Stored(), QStringLiteral("数量>1 or 状态=='a'"));
    QVERIFY(!editor.In<QToolButton>(0, "rowUp")->isEnabled());
    QVERIFY(!editor.In<QToolButton>(1, "rowDown")->isEnabled());
    editor.Press(editor.In<QToolButton>(0, "rowRemove"));

    QCOMPARE(editor.Stored(), QStringLiteral("状态=='a'"));
    QCOMPARE(editor.All().size(), 1);
    editor.Press(editor.In<QToolButton>(0, "rowRemove"));
    QCOMPARE(editor.Stored(), QString());
    QCOMPARE(editor.All().size(), 1);
}

void tst_ProcessVisualEditorRows::addsRemovesAndMovesRowsByKeys()
{
    Rows editor(QStringLiteral("数量>1 and 状态=='a'"));
    editor.Right(0)->setFocus();

    QTest::keyClick(editor.Right(0), Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("状态=='a' and 数量>1"));
    QVERIFY(editor.Left(1)->hasFocus());
    QTest::keyClick(editor.Left(1), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("数量>1 and 状态=='a'"));
    QTest::keyClick(editor.Left(0), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(editor.All().size(), 3);
    QVERIFY(editor.Left(1)->hasFocus());
    EditorFixture::Type(editor.Left(1), QStringLiteral("7"));
    QCOMPARE(editor.Stored(), QStringLiteral("数量>1 and 7 ==  and 状态=='a'"));
    QTest::keyClick(editor.Left(1), Qt::Key_Delete, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("数量>1 and 状态=='a'"));
    QVERIFY(editor.Left(1)->hasFocus());
}

void tst_ProcessVisualEditorRows::walksThroughRowsByTab()
{
    Rows editor(QStringLiteral("数量 > 1"));
    editor.PressAdd();
    editor.Right(0)->setFocus();
    QStringList names;
    for (int i = 0; i < 10; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names << QApplication::focusWidget()->objectName();
    }

    // The first row's pick button, the second row, the button behind all rows, and on to the note.
    const QStringList expected{QStringLiteral("pickButton"),      QStringLiteral("joinCombo"),
                               QStringLiteral("rowUp"),           QStringLiteral("rowRemove"),
                               QStringLiteral("valueEdit"),       QStringLiteral("pickButton"),
                               QStringLiteral("comparisonCombo"), QStringLiteral("valueEdit"),
                               QStringLiteral("pickButton"),      QStringLiteral("addRow")};
    QCOMPARE(names, expected);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("textEditNote"));
}

void tst_ProcessVisualEditorRows::fitsAtEveryScale_data()
{
    QTest::addColumn<qreal>("scale");
    QTest::newRow("100 %") << 1.0;
    QTest::newRow("150 %") << 1.5;
    QTest::newRow("200 %") << 2.0;
}

void tst_ProcessVisualEditorRows::fitsAtEveryScale()
{
    QFETCH(qreal, scale);
    DpiTool::SetScale(scale);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    const auto back = qScopeGuard([] {
        DpiTool::SetScale(1);
        qApp->setStyleSheet(QString());
    });

    Rows editor(QStringLiteral("数量 > 1 or 状态 == '完成'"));
    QTRY_COMPARE(TextFit::CutTexts(*editor.Field()).join(QLatin1Char(',')), QString());
    for (const int row : {0, 1}) {
        for (const QTextEdit* edit : {editor.Left(row), editor.Right(row)}) {
            const int height = qCeil(edit->document()->size().height());
            QVERIFY2(height <= edit->viewport()->height(),
                     qPrintable(QStringLiteral("%1 > %2").arg(height).arg(edit->viewport()->height())));
        }
    }
}

void tst_ProcessVisualEditorRows::undoesAWholeRow()
{
    Rows editor(QStringLiteral("数量>1 and 状态=='a'"));
    editor.Press(editor.In<QToolButton>(0, "rowRemove"));
    QCOMPARE(editor.All().size(), 1);

    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("数量>1 and 状态=='a'"));
    QCOMPARE(editor.All().size(), 2);
    QCOMPARE(Shown(editor.Right(1)), QStringLiteral("a"));
}

void tst_ProcessVisualEditorRows::showsRowsOfAnOldCondition()
{
    Rows editor(QStringLiteral("len(行) > 3 and '元' in 状态 or not 数量"));

    QCOMPARE(editor.All().size(), 3);
    QCOMPARE(Shown(editor.Left(0)), QStringLiteral("{}"));
    QCOMPARE(editor.In<QComboBox>(0, "comparisonCombo")->currentText(), QStringLiteral("大于"));
    QCOMPARE(Shown(editor.Right(0)), QStringLiteral("3"));
    QCOMPARE(editor.In<QComboBox>(1, "comparisonCombo")->currentText(), QStringLiteral("包含"));
    QCOMPARE(Shown(editor.Right(1)), QStringLiteral("元"));
    QCOMPARE(editor.In<QComboBox>(1, "joinCombo")->currentText(), QStringLiteral("并且"));
    QCOMPARE(editor.In<QComboBox>(2, "joinCombo")->currentText(), QStringLiteral("或者"));
    QCOMPARE(editor.In<QComboBox>(2, "comparisonCombo")->currentText(), QStringLiteral("不成立"));
    QVERIFY(!editor.Right(2)->isVisible());
}

void tst_ProcessVisualEditorRows::switchesToPythonAndBack()
{
    const QString python = QStringLiteral("数量>3  and 状态=='完成'");
    Rows editor(python);

    editor.PressPython();
    auto* line = editor.Field()->findChild<QLineEdit*>(QStringLiteral("editor"));
    QVERIFY(line);
    QCOMPARE(line->text(), python);
    QVERIFY(line->hasFocus());
    editor.PressPython();
    QCOMPARE(editor.All().size(), 2);
    QCOMPARE(editor.Stored(), python);
    QVERIFY(!editor.app->GetModified());

    editor.PressPython();
    line = editor.Field()->findChild<QLineEdit*>(QStringLiteral("editor"));
    QTest::keyClick(line, Qt::Key_End);
    EditorFixture::Type(line, QStringLiteral(" or 数量<0"));
    editor.PressPython();
    QCOMPARE(editor.All().size(), 3);
    QCOMPARE(Shown(editor.Right(2)), QStringLiteral("0"));
}

void tst_ProcessVisualEditorRows::saysWhyRowsCannotShowIt()
{
    const QString python = QStringLiteral("数量 and (状态 or 1 < 2)");
    Rows editor(python);
    auto* button = editor.Field()->findChild<QToolButton*>(QStringLiteral("pythonButton"));

    QVERIFY(button->isChecked());
    QCOMPARE(editor.Field()->findChild<QLineEdit*>(QStringLiteral("editor"))->text(), python);
    QVERIFY(editor.Label("labelHint").contains(QStringLiteral("括号分组")));
    editor.PressPython();

    QVERIFY(button->isChecked());
    QCOMPARE(editor.Stored(), python);
    QCOMPARE(editor.All().size(), 0);
}

void tst_ProcessVisualEditorRows::saysWhichRowIsIncomplete()
{
    Rows editor(QStringLiteral("数量 > 1"));
    editor.PressAdd();
    QCOMPARE(editor.Label("labelProblem"), QStringLiteral("第 2 行还没有填完整"));
    QVERIFY(editor.Left(1)->property("hasError").toBool());
    QVERIFY(!editor.Left(0)->property("hasError").toBool());

    editor.Click(QStringLiteral("set 数量"));
    editor.Click(QStringLiteral("i"));

    QCOMPARE(editor.All().size(), 2);
    editor.Type(editor.Left(1), QStringLiteral("5"));
    editor.Type(editor.Right(1), QStringLiteral("6"));
    QCOMPARE(editor.Label("labelProblem"), QString());
    QCOMPARE(editor.Stored(), QStringLiteral("数量 > 1 and 5 == 6"));
}

void tst_ProcessVisualEditorRows::leavesUntouchedPythonAsItIs()
{
    const QString python = QStringLiteral("=数量>3  and\n状态 == 'x'");
    Rows editor(python);
    QCOMPARE(editor.All().size(), 2);

    editor.Left(0)->setFocus();
    editor.Right(1)->setFocus();
    editor.view->setFocus();

    QCOMPARE(editor.Stored(), python);
    QVERIFY(!editor.app->GetModified());
}

RPA_TEST_MAIN(tst_ProcessVisualEditorRows)

#include "tst_processvisualeditor_rows.moc"
