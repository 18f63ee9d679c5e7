// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
RpaStatement Reading(const QString& id, const QString& output)
{
    RpaStatement reading = Statement(QStringLiteral("t-read"), id);
    reading.arguments.insert(QStringLiteral("path"), QStringLiteral("a.txt"));
    reading.output = output;
    return reading;
}

RpaStatement LogOf(const QString& id, const QString& text)
{
    RpaStatement log = Log(id);
    log.arguments.insert(QStringLiteral("text"), text);
    return log;
}

RpaStatement Setting(const QString& id, const QString& variable)
{
    RpaStatement setting = Statement(QStringLiteral("t-set"), id);
    setting.arguments.insert(QStringLiteral("variable"), variable);
    setting.arguments.insert(QStringLiteral("value"), QStringLiteral("1"));
    return setting;
}

// "内容" is read by "r" and used in both processes.
Editor* NewEditor(const QVector<RpaStatement>& more = {})
{
    auto* editor =
        new Editor(QVector<RpaStatement>{Reading(QStringLiteral("r"), QStringLiteral("内容")),
                                         LogOf(QStringLiteral("u"), QStringLiteral("=内容 + \"内容\"")),
                                         Reading(QStringLiteral("o"), QStringLiteral("别的"))} +
                   more);
    editor->app->GetProcessDataManager()->GetProcess(1)->SetStatements(
        {LogOf(QStringLiteral("s"), QStringLiteral("=len(内容)"))});
    return editor;
}

QString TextOf(const Editor& editor, int process, const QString& id)
{
    return editor.app->GetProcessDataManager()->GetProcess(process)->Find(id)->GetArgument(
        QStringLiteral("text"));
}

void TypeOutput(const Editor& editor, const QString& name)
{
    auto* output = editor.Find<QLineEdit>(QStringLiteral("lineEditOutput"));
    output->setFocus();
    output->selectAll();
    for (const QChar c : name)
        QTest::keyClick(output, c.toLatin1());
    QTest::keyClick(output, Qt::Key_Return);
}
} // namespace

// A variable that gets another name.
class tst_ProcessVisualEditorVariables : public QObject
{
    Q_OBJECT

private slots:
    void usesFollowTheNameOfAResult();
    void usesFollowTheNameThatAStatementSets();
    void aResultThatGoesIntoAnotherVariableLeavesTheUses();
    void aVariableWithTwoSourcesLeavesTheUses();
    void isRenamedInAllProcessesByTheDialog();
    void theDialogShowsThePlacesBeforeAndAfter();
    void theDialogRefusesANameInUse();
    void theDialogIsTakenAwayWithItsEditor();
};

void tst_ProcessVisualEditorVariables::usesFollowTheNameOfAResult()
{
    const std::unique_ptr<Editor> editor(NewEditor());
    editor->Click(QStringLiteral("r"));

    TypeOutput(*editor, QStringLiteral("text"));

    QCOMPARE(editor->Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("text"));
    QCOMPARE(TextOf(*editor, 0, QStringLiteral("u")), QStringLiteral("=text + \"内容\""));
    QCOMPARE(TextOf(*editor, 1, QStringLiteral("s")), QStringLiteral("=len(text)"));
    QVERIFY(editor->widget.isActiveWindow());

    editor->view->setFocus();
    editor->Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor->Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("内容"));
    QCOMPARE(TextOf(*editor, 0, QStringLiteral("u")), QStringLiteral("=内容 + \"内容\""));
    QCOMPARE(TextOf(*editor, 1, QStringLiteral("s")), QStringLiteral("=len(内容)"));

    editor->Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(TextOf(*editor, 1, QStringLiteral("s")), QStringLiteral("=len(text)"));
}

void tst_ProcessVisualEditorVariables::usesFollowTheNameThatAStatementSets()
{
    const std::unique_ptr<Editor> editor(NewEditor({Setting(QStringLiteral("v"), QStringLiteral("数")),
                                                    LogOf(QStringLiteral("w"), QStringLiteral("=数"))}));
    editor->Click(QStringLiteral("v"));
    auto* field = editor->Field<QComboBox>(QStringLiteral("variable"));

    field->lineEdit()->setFocus();
    field->lineEdit()->selectAll();
    QTest::keyClicks(field->lineEdit(), QStringLiteral("many"));
    QTest::keyClick(field->lineEdit(), Qt::Key_Return);

    QCOMPARE(TextOf(*editor, 0, QStringLiteral("w")), QStringLiteral("=many"));
    editor->view->setFocus();
    editor->Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(TextOf(*editor, 0, QStringLiteral("w")), QStringLiteral("=数"));
    QCOMPARE(editor->Node(QStringLiteral("v"))->GetArgument(QStringLiteral("variable")),
             QStringLiteral("数"));
}

void tst_ProcessVisualEditorVariables::aResultThatGoesIntoAnotherVariableLeavesTheUses()
{
    const std::unique_ptr<Editor> editor(NewEditor({Reading(QStringLiteral("p"), QStringLiteral("other"))}));
    editor->Click(QStringLiteral("r"));

    TypeOutput(*editor, QStringLiteral("other"));

    QCOMPARE(editor->Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("other"));
    QCOMPARE(TextOf(*editor, 0, QStringLiteral("u")), QStringLiteral("=内容 + \"内容\""));
}

void tst_ProcessVisualEditorVariables::aVariableWithTwoSourcesLeavesTheUses()
{
    const std::unique_ptr<Editor> editor(NewEditor({Setting(QStringLiteral("v"), QStringLiteral("内容"))}));
    editor->Click(QStringLiteral("r"));

    TypeOutput(*editor, QStringLiteral("text"));

    QCOMPARE(editor->Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("text"));
    QCOMPARE(TextOf(*editor, 0, QStringLiteral("u")), QStringLiteral("=内容 + \"内容\""));
}

void tst_ProcessVisualEditorVariables::isRenamedInAllProcessesByTheDialog()
{
    const std::unique_ptr<Editor> editor(NewEditor({Setting(QStringLiteral("v"), QStringLiteral("内容"))}));
    editor->Click(QStringLiteral("r"));
    QString count;
    ModalDriver modals;
    modals.Then([&count](QWidget* dialog) {
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditVariableName"));
        QCOMPARE(dialog->focusWidget(), name);
        QTest::keyClicks(name, QStringLiteral("text"));
        count = dialog->findChild<QLabel*>(QStringLiteral("labelRename"))->text();
        QTest::keyClick(name, Qt::Key_Return);
    });

    editor->Key(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(count, QStringLiteral("将修改 2 个流程中的 4 处"));
    QCOMPARE(editor->Node(QStringLiteral("v"))->GetArgument(QStringLiteral("variable")),
             QStringLiteral("text"));
    QCOMPARE(TextOf(*editor, 0, QStringLiteral("u")), QStringLiteral("=text + \"内容\""));
    QCOMPARE(TextOf(*editor, 1, QStringLiteral("s")), QStringLiteral("=len(text)"));

    editor->widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor->widget));
    editor->view->setFocus();
    editor->Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor->Node(QStringLiteral("v"))->GetArgument(QStringLiteral("variable")),
             QStringLiteral("内容"));
    QCOMPARE(editor->Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("内容"));
    QCOMPARE(TextOf(*editor, 1, QStringLiteral("s")), QStringLiteral("=len(内容)"));
}

void tst_ProcessVisualEditorVariables::theDialogShowsThePlacesBeforeAndAfter()
{
    RpaStatement disabled = LogOf(QStringLiteral("d"), QStringLiteral("=内容"));
    disabled.enabled = false;
    disabled.arguments.insert(QStringLiteral("level"), QStringLiteral("error"));
    const std::unique_ptr<Editor> editor(NewEditor({disabled}));
    editor->Click(QStringLiteral("r"));
    QStringList before;
    QStringList after;
    bool isAfterHidden = false;
    ModalDriver modals;
    modals.Then([&](QWidget* dialog) {
        auto* list = dialog->findChild<QTreeView*>(QStringLiteral("renamedPlaces"));
        const auto column = [list](int at) {
            QStringList texts;
            for (int row = 0; row < list->model()->rowCount(); ++row)
                texts.append(list->model()->index(row, at).data().toString());
            return texts;
        };
        isAfterHidden = list->isColumnHidden(5);
        QTest::keyClicks(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditVariableName")),
                         QStringLiteral("text"));
        QVERIFY(list->isVisible() && !list->isColumnHidden(5));
        for (int row = 0; row < column(0).size(); ++row)
            before.append(column(0).at(row) + column(1).at(row) + QLatin1Char(' ') + column(4).at(row));
        after = column(5);
        ModalDriver::Reject(dialog);
    });

    editor->Key(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);

    QVERIFY(isAfterHidden); // as long as the name is the same
    QCOMPARE(before, (QStringList{QStringLiteral("主流程1 读取 a.txt 到 内容"),
                                  QStringLiteral("主流程2 输出 ƒ 内容 + \"内容\"，级别 信息"),
                                  QStringLiteral("主流程4 输出 ƒ 内容，级别 错误"),
                                  QStringLiteral("子流程1 输出 ƒ len(内容)，级别 信息")}));
    QCOMPARE(after.first(), QStringLiteral("读取 a.txt 到 text"));
    QCOMPARE(after.last(), QStringLiteral("输出 ƒ len(text)，级别 信息"));
    QVERIFY(!editor->app->GetModified());
}

void tst_ProcessVisualEditorVariables::theDialogRefusesANameInUse()
{
    const std::unique_ptr<Editor> editor(NewEditor({Reading(QStringLiteral("p"), QStringLiteral("other"))}));
    editor->Click(QStringLiteral("r"));
    QString problem;
    bool isOffered = true;
    ModalDriver modals;
    modals.Then([&](QWidget* dialog) {
        QTest::keyClicks(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditVariableName")),
                         QStringLiteral("other"));
        problem = dialog->findChild<QLabel*>(QStringLiteral("labelRename"))->text();
        isOffered = dialog->findChild<QPushButton*>(QStringLiteral("pushButtonRename"))->isEnabled();
        ModalDriver::Reject(dialog);
    });

    editor->Key(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(problem, QStringLiteral("“other”已经在使用"));
    QVERIFY(!isOffered);
    QVERIFY(!editor->app->GetModified());
}

void tst_ProcessVisualEditorVariables::theDialogIsTakenAwayWithItsEditor()
{
    std::unique_ptr<Editor> editor(NewEditor());
    const RpaAppDataPtr app = editor->app;
    ModalDriver modals;
    modals.Then([&editor](QWidget*) { editor.reset(); });

    editor->Key(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);

    QVERIFY(!editor);
    QVERIFY(!app->GetModified());
}

RPA_TEST_MAIN(tst_ProcessVisualEditorVariables)

#include "tst_processvisualeditor_variables.moc"
