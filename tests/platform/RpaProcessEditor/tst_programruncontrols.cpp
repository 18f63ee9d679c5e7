// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "RunFixture.h"
#include "TestApp.h"

#include <RpaProcessEditor/ProcessProgramEditorWidget.h>

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTextBlock>

using namespace EditorFixture;

namespace
{
const QString program = QStringLiteral("import math\n"
                                       "总 = 0\n"
                                       "def add(n):\n"
                                       "    return 总 + n\n"
                                       "for n in range(3):\n"
                                       "    总 = add(n)\n"
                                       "print(总)\n"
                                       "print('完')\n");

// An author at the text of a program, with the engine behind it.
struct Author
{
    Author() : app(App()), engine(widget, app, false)
    {
        Main(app)->SetProgramText(program);
        widget.resize(900, 500);
        widget.SetRpaAppData(app);
        widget.show();
        widget.activateWindow();
        if (!QTest::qWaitForWindowActive(&widget))
            QTest::qFail("the window never became active", __FILE__, __LINE__);
        edit = widget.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
        edit->setFocus();
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(edit, key, modifiers);
    }
    void GoTo(int line)
    {
        Key(Qt::Key_Home, Qt::ControlModifier);
        for (int at = 1; at < line; ++at)
            Key(Qt::Key_Down);
    }
    bool Menu(int line, const QString& text)
    {
        const QTextCursor cursor(edit->document()->findBlockByNumber(line - 1));
        return ChooseInMenu(edit->viewport(), edit->cursorRect(cursor).center(), text);
    }

    RpaAppDataPtr app;
    ProcessProgramEditorWidget widget;
    RunFixture engine;
    QPlainTextEdit* edit = nullptr;
};

QString Stop()
{
    return RunFixture::WaitForStop();
}
} // namespace

// The run controls above the text of a program.
class tst_ProgramRunControls : public QObject
{
    Q_OBJECT

private slots:
    void runsAndSteps();
    void runsToTheLineThatWasClicked();
    void runsTheSelectedLinesOnly();
    void runsFromTheLineWithWhatIsNeeded();
};

void tst_ProgramRunControls::runsAndSteps()
{
    Author author;
    author.Key(Qt::Key_F5);
    QCOMPARE(Stop(), QStringLiteral("end: 3 完"));
    RunFixture::Source()->Initialize();

    author.Key(Qt::Key_F10);
    QCOMPARE(Stop(), QStringLiteral("1"));
    author.GoTo(6);
    author.Key(Qt::Key_F10, Qt::ControlModifier);
    QCOMPARE(Stop(), QStringLiteral("6"));
    author.Key(Qt::Key_F11);
    QCOMPARE(Stop(), QStringLiteral("4"));
    author.Key(Qt::Key_F5, Qt::ShiftModifier);

    QVERIFY(RunFixture::WaitFor(RpaDebugSession::State::Idle));
    QCOMPARE(author.engine.asked.size(), 2);
}

void tst_ProgramRunControls::runsToTheLineThatWasClicked()
{
    Author author;

    QVERIFY(author.Menu(8, QStringLiteral("运行到此处")));

    QCOMPARE(Stop(), QStringLiteral("8"));
    QCOMPARE(RunFixture::Logged(), QStringLiteral("3"));
}

void tst_ProgramRunControls::runsTheSelectedLinesOnly()
{
    Author author;
    author.GoTo(8);
    author.Key(Qt::Key_Down, Qt::ShiftModifier);

    author.Key(Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(Stop(), QStringLiteral("end: 完"));
}

void tst_ProgramRunControls::runsFromTheLineWithWhatIsNeeded()
{
    Author author;
    ModalDriver modals{std::chrono::milliseconds(runWaitMs)};
    modals.Then([](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLabel*>(QStringLiteral("labelUnknown"))->text(),
                 QStringLiteral("上次的值未知：总"));
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("given_总"));
        QTest::keyClicks(edit, QStringLiteral("100"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    author.GoTo(5);

    author.Key(Qt::Key_F10, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(Stop(), QStringLiteral("end: 103 完"));
}

RPA_TEST_MAIN(tst_ProgramRunControls)
#include "tst_programruncontrols.moc"
