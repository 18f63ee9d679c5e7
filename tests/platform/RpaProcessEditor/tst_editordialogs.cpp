// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaProcessEditor/ProcessProgramEditorWidget.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

#include <memory>

using namespace EditorFixture;

// The dialogs that the process editors open, and editors that are taken away, or shown another app,
// meanwhile.
class tst_EditorDialogs : public QObject
{
    Q_OBJECT

private slots:
    void takesTheChosenFileAsAnArgument();
    void isTakenAwayWhileADialogIsOpen_data();
    void isTakenAwayWhileADialogIsOpen();
    void leavesTheAppThatCameMeanwhileAlone_data();
    void leavesTheAppThatCameMeanwhileAlone();
    void goesToTheLineThatWasAskedFor();
    void programIsTakenAwayWhileTheLineIsAskedFor();

private:
    static QVector<RpaStatement> Reading()
    {
        return {Statement(QStringLiteral("t-read"), QStringLiteral("r"))};
    }
    static void Ask(Editor& editor, const QString& gesture)
    {
        auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
        if (gesture == QLatin1String("add")) {
            QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("processAddButton")), Qt::LeftButton);
        } else if (gesture == QLatin1String("browse")) {
            editor.Click(QStringLiteral("r"));
            auto* field = editor.Find<QWidget>(QStringLiteral("field_path"));
            QTest::mouseClick(field->findChild<QToolButton*>(QStringLiteral("browseButton")), Qt::LeftButton);
        } else {
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
            QTest::keyClick(bar, gesture == QLatin1String("rename") ? Qt::Key_F2 : Qt::Key_Delete);
        }
    }
    static void Agree(QWidget* dialog)
    {
        if (auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName")))
            edit->setText(QStringLiteral("新的"));
        ModalDriver::Press(dialog, QStringLiteral("确定"));
    }
};

void tst_EditorDialogs::takesTheChosenFileAsAnArgument()
{
    const QString chosen = QDir::temp().absoluteFilePath(QStringLiteral("发票.txt"));
    Editor editor(Reading());
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([chosen](QFileDialog* files) {
        QCOMPARE(files->windowTitle(), QStringLiteral("文件"));
        auto* name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(chosen);
        QTest::keyClick(name, Qt::Key_Return);
    });

    Ask(editor, QStringLiteral("browse"));

    QCOMPARE(editor.Node(QStringLiteral("r"))->GetArgument(QStringLiteral("path")), chosen);
}

void tst_EditorDialogs::isTakenAwayWhileADialogIsOpen_data()
{
    QTest::addColumn<QString>("gesture");
    QTest::newRow("a file is chosen") << QStringLiteral("browse");
    QTest::newRow("a process is added") << QStringLiteral("add");
    QTest::newRow("a process is renamed") << QStringLiteral("rename");
    QTest::newRow("a process is deleted") << QStringLiteral("delete");
}

void tst_EditorDialogs::isTakenAwayWhileADialogIsOpen()
{
    QFETCH(QString, gesture);
    auto editor = std::make_unique<Editor>(Reading());
    const RpaAppDataPtr app = editor->app;
    ModalDriver modals;
    modals.Then([&editor](QWidget*) { editor.reset(); });

    Ask(*editor, gesture);

    QVERIFY(!editor);
    QCOMPARE(modals.GetSeenCount(), 1);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(app->GetProcessDataManager()->GetCount(), 2);
}

void tst_EditorDialogs::leavesTheAppThatCameMeanwhileAlone_data()
{
    QTest::addColumn<QString>("gesture");
    QTest::newRow("a process is added") << QStringLiteral("add");
    QTest::newRow("a process is renamed") << QStringLiteral("rename");
    QTest::newRow("a process is deleted") << QStringLiteral("delete");
}

void tst_EditorDialogs::leavesTheAppThatCameMeanwhileAlone()
{
    QFETCH(QString, gesture);
    Editor editor(Reading());
    const RpaAppDataPtr next = App(Reading());
    const QStringList names = next->GetProcessDataManager()->GetProcessNames();
    next->SetModified(false);
    ModalDriver modals;
    modals.Then([&](QWidget* dialog) {
        editor.widget.SetRpaAppData(next);
        Agree(dialog);
    });

    Ask(editor, gesture);

    QCOMPARE(next->GetProcessDataManager()->GetProcessNames(), names);
    QVERIFY(!next->GetModified());
}

void tst_EditorDialogs::goesToTheLineThatWasAskedFor()
{
    const RpaAppDataPtr app = App();
    Main(app)->SetProgramText(QStringLiteral("a\nb\nc\nd\n"));
    ProcessProgramEditorWidget widget;
    widget.SetRpaAppData(app);
    widget.show();
    auto* edit = widget.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
    edit->setFocus();
    ModalDriver modals;
    modals.ThenIn<QInputDialog>([](QInputDialog* dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("转到行"));
        QCOMPARE(dialog->intMaximum(), 5);
        QCOMPARE(dialog->intValue(), 1);
        dialog->setIntValue(3);
        QTest::keyClick(dialog->findChild<QSpinBox*>(), Qt::Key_Return);
    });

    widget.findChild<QAction*>(QStringLiteral("actionGoToLine"))->trigger();

    QCOMPARE(edit->textCursor().blockNumber(), 2);
}

void tst_EditorDialogs::programIsTakenAwayWhileTheLineIsAskedFor()
{
    auto widget = std::make_unique<ProcessProgramEditorWidget>();
    widget->SetRpaAppData(App());
    widget->show();
    ModalDriver modals;
    modals.ThenIn<QInputDialog>([&widget](QInputDialog*) { widget.reset(); });

    widget->findChild<QAction*>(QStringLiteral("actionGoToLine"))->trigger();

    QVERIFY(!widget);
    QCOMPARE(modals.GetSeenCount(), 1);
}

RPA_TEST_MAIN(tst_EditorDialogs)

#include "tst_editordialogs.moc"
