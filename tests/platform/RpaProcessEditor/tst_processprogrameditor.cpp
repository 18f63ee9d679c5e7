// SPDX-License-Identifier: Apache-2.0

#include "EditorFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <OxBase/OxBlocker.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbTheme.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSyntaxHighlighter>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QWheelEvent>

using namespace EditorFixture;

namespace
{
RpaAppDataPtr ProgramApp(const QString& text)
{
    RpaAppDataPtr app = App();
    Main(app)->SetProgramText(text);
    app->SetModified(false);
    return app;
}

struct Editor
{
    explicit Editor(const QString& text = QString()) : app(ProgramApp(text))
    {
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
    void Type(const QString& text) { QTest::keyClicks(edit, text); }
    QString Stored() const { return Main(app)->GetProgramText(); }

    RpaAppDataPtr app;
    ProcessProgramEditorWidget widget;
    QPlainTextEdit* edit = nullptr;
};
} // namespace

class tst_ProcessProgramEditor : public QObject
{
    Q_OBJECT

private slots:
    void showsTheTextWithoutMarkingTheApp();
    void writesEveryKeystrokeIntoTheApp();
    void keepsTheCodeWhenTooMuchIsPasted();
    void isEmptyAndDisabledWithoutAnApp();
    void keepsUndoWhileTheSameAppIsShown();
    void forgetsUndoWithAnotherApp();
    void followsATextThatSomebodyElseWrites();
    void createsAProcessForAnAppThatHasNone();
    void asksToSaveOnControlS();
    void asksForNoSaveWhileABlockingSaveWaits();
    void indentsNewLinesLikePython_data();
    void indentsNewLinesLikePython();
    void indentsAndOutdentsTheSelectedLines();
    void takesOneLevelWithBackspace();
    void togglesComments_data();
    void togglesComments();
    void movesAndDuplicatesLines();
    void findsAndReplaces();
    void replacesAllInOneStep();
    void marksBracketPairs();
    void zoomsAndComesBack();
    void tellsLineAndColumn();
    void coloursKeywords();
    void namesTheLibraryThatColours();
};

void tst_ProcessProgramEditor::showsTheTextWithoutMarkingTheApp()
{
    Editor editor(QStringLiteral("a = 1\r\nb = 2\n"));

    QCOMPARE(editor.edit->toPlainText(), QStringLiteral("a = 1\nb = 2\n"));
    QVERIFY(!editor.app->GetModified());
    QCOMPARE(editor.Stored(), QStringLiteral("a = 1\r\nb = 2\n"));
}

void tst_ProcessProgramEditor::writesEveryKeystrokeIntoTheApp()
{
    Editor editor;
    QSignalSpy edits(editor.app.data(), &RpaAppData::SigEdited);

    editor.Type(QStringLiteral("ab"));

    QCOMPARE(editor.Stored(), QStringLiteral("ab"));
    QCOMPARE(edits.count(), 2);
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessProgramEditor::keepsTheCodeWhenTooMuchIsPasted()
{
    Editor editor(QStringLiteral("x = 1\n"));
    editor.edit->findChild<WbTextLimit*>()->SetMostBytes(2048);
    const ToastWatcher toasts;
    QGuiApplication::clipboard()->setText(QString(2048, QLatin1Char('y')));

    editor.Key(Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("x = 1\n"));
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("流程的代码不能超过 1 MB，没有插入")});
    editor.Type(QStringLiteral("z"));
    QCOMPARE(editor.Stored(), QStringLiteral("zx = 1\n"));
}

void tst_ProcessProgramEditor::isEmptyAndDisabledWithoutAnApp()
{
    Editor editor(QStringLiteral("a"));

    editor.widget.SetRpaAppData(nullptr);

    QCOMPARE(editor.edit->toPlainText(), QString());
    QVERIFY(!editor.edit->isEnabled());
    QCOMPARE(editor.Stored(), QStringLiteral("a"));
}

void tst_ProcessProgramEditor::keepsUndoWhileTheSameAppIsShown()
{
    Editor editor(QStringLiteral("a"));
    editor.Key(Qt::Key_End);
    editor.Type(QStringLiteral("b"));

    editor.widget.SetRpaAppData(editor.app);
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("a"));
}

void tst_ProcessProgramEditor::forgetsUndoWithAnotherApp()
{
    Editor editor(QStringLiteral("a"));
    editor.Type(QStringLiteral("b"));
    const RpaAppDataPtr other = ProgramApp(QStringLiteral("other"));

    editor.widget.SetRpaAppData(other);
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(Main(other)->GetProgramText(), QStringLiteral("other"));
    QVERIFY(!other->GetModified());
    QCOMPARE(editor.Stored(), QStringLiteral("ba"));
}

void tst_ProcessProgramEditor::followsATextThatSomebodyElseWrites()
{
    Editor editor(QStringLiteral("a"));

    Main(editor.app)->SetProgramText(QStringLiteral("restored"));

    QCOMPARE(editor.edit->toPlainText(), QStringLiteral("restored"));
    QVERIFY(!editor.app->GetModified());
}

void tst_ProcessProgramEditor::createsAProcessForAnAppThatHasNone()
{
    Editor editor;
    editor.app->GetProcessDataManager()->Clear();

    editor.Type(QStringLiteral("x"));

    QCOMPARE(editor.app->GetProcessDataManager()->GetCount(), 1);
    QCOMPARE(editor.Stored(), QStringLiteral("x"));
}

void tst_ProcessProgramEditor::asksToSaveOnControlS()
{
    Editor editor;
    QSignalSpy saves(&editor.widget, &ProcessProgramEditorWidget::SigSaveCode);

    editor.Key(Qt::Key_S, Qt::ControlModifier);

    QCOMPARE(saves.count(), 1);
    QCOMPARE(editor.edit->toPlainText(), QString());
}

void tst_ProcessProgramEditor::asksForNoSaveWhileABlockingSaveWaits()
{
    Editor editor;
    QSignalSpy saves(&editor.widget, &ProcessProgramEditorWidget::SigSaveCode);
    OxBlocker blocker;
    bool wasBlocking = false;
    QTimer::singleShot(0, &blocker, [&] {
        wasBlocking = OxBlocker::IsBlocking();
        editor.widget.findChild<QAction*>(QStringLiteral("actionSave"))->trigger();
        blocker.Continue();
    });

    blocker.Block(5000);

    QVERIFY(wasBlocking);
    QCOMPARE(saves.count(), 0);
}

void tst_ProcessProgramEditor::indentsNewLinesLikePython_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    QTest::newRow("plain") << QStringLiteral("a = 1") << QStringLiteral("a = 1\nx");
    QTest::newRow("same depth") << QStringLiteral("    a = 1") << QStringLiteral("    a = 1\n    x");
    QTest::newRow("behind a colon") << QStringLiteral("if a:") << QStringLiteral("if a:\n    x");
    QTest::newRow("behind return") << QStringLiteral("    return a") << QStringLiteral("    return a\nx");
}

void tst_ProcessProgramEditor::indentsNewLinesLikePython()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    Editor editor(before);

    editor.Key(Qt::Key_End);
    editor.Key(Qt::Key_Return);
    editor.Type(QStringLiteral("x"));

    QCOMPARE(editor.Stored(), after);
}

void tst_ProcessProgramEditor::indentsAndOutdentsTheSelectedLines()
{
    Editor editor(QStringLiteral("a\n\nb\nc"));
    editor.Key(Qt::Key_Down, Qt::ShiftModifier);
    editor.Key(Qt::Key_Down, Qt::ShiftModifier);
    editor.Key(Qt::Key_End, Qt::ShiftModifier);

    editor.Key(Qt::Key_Tab);
    QCOMPARE(editor.Stored(), QStringLiteral("    a\n\n    b\nc"));

    editor.Key(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("a\n\nb\nc"));

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("    a\n\n    b\nc"));
}

void tst_ProcessProgramEditor::takesOneLevelWithBackspace()
{
    Editor editor(QStringLiteral("      x"));
    editor.Key(Qt::Key_End);
    editor.Key(Qt::Key_Left);

    editor.Key(Qt::Key_Backspace);
    QCOMPARE(editor.Stored(), QStringLiteral("    x"));
    editor.Key(Qt::Key_Backspace);
    QCOMPARE(editor.Stored(), QStringLiteral("x"));
}

void tst_ProcessProgramEditor::togglesComments_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    QTest::newRow("code") << QStringLiteral("a\n    b") << QStringLiteral("# a\n#     b");
    QTest::newRow("comments") << QStringLiteral("# a\n#b") << QStringLiteral("a\nb");
    QTest::newRow("mixed") << QStringLiteral("# a\nb") << QStringLiteral("# # a\n# b");
    QTest::newRow("empty line between") << QStringLiteral("a\n\nb") << QStringLiteral("# a\n\n# b");
}

void tst_ProcessProgramEditor::togglesComments()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    Editor editor(before);

    editor.Key(Qt::Key_A, Qt::ControlModifier);
    editor.Key(Qt::Key_Slash, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), after);
}

void tst_ProcessProgramEditor::movesAndDuplicatesLines()
{
    Editor editor(QStringLiteral("a\nb\nc"));

    editor.Key(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("b\na\nc"));
    editor.Key(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("b\nc\na"));
    editor.Key(Qt::Key_Down, Qt::AltModifier); // at the end already
    editor.Key(Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("b\na\nc"));

    editor.Key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("b\na\na\nc"));
}

void tst_ProcessProgramEditor::findsAndReplaces()
{
    Editor editor(QStringLiteral("one\nTwo two\none"));

    editor.Key(Qt::Key_H, Qt::ControlModifier);
    auto* find = editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    QTRY_VERIFY(find->hasFocus());
    QTest::keyClicks(find, QStringLiteral("two"));
    QCOMPARE(editor.widget.findChild<QLabel*>(QStringLiteral("labelFindCount"))->text(),
             QStringLiteral("共 2 处"));
    QCOMPARE(editor.edit->textCursor().selectedText(), QStringLiteral("Two"));

    auto* replace = editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditReplace"));
    replace->setFocus();
    QTest::keyClicks(replace, QStringLiteral("3"));
    QTest::keyClick(replace, Qt::Key_F3);
    QCOMPARE(editor.edit->textCursor().selectedText(), QStringLiteral("two"));
    QTest::keyClick(replace, Qt::Key_F3);
    QCOMPARE(editor.Stored(), QStringLiteral("one\nTwo two\none"));
    QTest::keyClick(replace, Qt::Key_Return);
    QCOMPARE(editor.Stored(), QStringLiteral("one\n3 two\none"));

    QTest::keyClick(replace, Qt::Key_Escape);
    QVERIFY(!editor.widget.findChild<QWidget*>(QStringLiteral("codeFindBar"))->isVisible());
}

void tst_ProcessProgramEditor::replacesAllInOneStep()
{
    Editor editor(QStringLiteral("a b a\na"));
    QSignalSpy edits(editor.app.data(), &RpaAppData::SigEdited);
    editor.Key(Qt::Key_H, Qt::ControlModifier);
    QTest::keyClicks(editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditFind")),
                     QStringLiteral("a"));
    QTest::keyClicks(editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditReplace")),
                     QStringLiteral("aa"));

    QTest::mouseClick(editor.widget.findChild<QPushButton*>(QStringLiteral("replaceAllButton")),
                      Qt::LeftButton);
    QCOMPARE(editor.Stored(), QStringLiteral("aa b aa\naa"));
    QCOMPARE(edits.count(), 1);

    editor.edit->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("a b a\na"));
}

void tst_ProcessProgramEditor::marksBracketPairs()
{
    Editor editor(QStringLiteral("f(a[1])"));

    editor.Key(Qt::Key_Right); // before "("

    QList<int> marked;
    const auto selections = editor.edit->extraSelections();
    for (const QTextEdit::ExtraSelection& selection : selections)
        if (selection.cursor.hasSelection())
            marked.append(selection.cursor.selectionStart());
    QCOMPARE(marked, (QList<int>{1, 6}));
}

void tst_ProcessProgramEditor::zoomsAndComesBack()
{
    Editor editor(QStringLiteral("a"));
    const qreal original = QFontInfo(editor.edit->document()->defaultFont()).pointSizeF();

    editor.Key(Qt::Key_Equal, Qt::ControlModifier);
    QVERIFY(QFontInfo(editor.edit->document()->defaultFont()).pointSizeF() > original);
    editor.Key(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(QFontInfo(editor.edit->document()->defaultFont()).pointSizeF(), original);
}

void tst_ProcessProgramEditor::tellsLineAndColumn()
{
    Editor editor(QStringLiteral("ab\ncd"));

    editor.Key(Qt::Key_Down);
    editor.Key(Qt::Key_Right);

    QCOMPARE(editor.widget.findChild<QLabel*>(QStringLiteral("labelCursorPosition"))->text(),
             QStringLiteral("第 2 行，第 2 列"));
}

void tst_ProcessProgramEditor::coloursKeywords()
{
    Editor editor(QStringLiteral("for x in y:\n    pass"));
    const QTextBlock first = editor.edit->document()->firstBlock();

    QTRY_VERIFY(!first.layout()->formats().isEmpty());
    const QTextLayout::FormatRange range = first.layout()->formats().first();
    QCOMPARE(range.start, 0);
    QCOMPARE(range.length, 3);
    QCOMPARE(range.format.foreground().color(), WbTheme::Instance()->Color(WbColor::CodeKeyword));
}

void tst_ProcessProgramEditor::namesTheLibraryThatColours()
{
    Editor editor(QStringLiteral("pass"));
    const auto* highlighter = editor.edit->document()->findChild<QSyntaxHighlighter*>();
    QVERIFY(highlighter);

    const QString name = ProcessProgramEditorWidget::GetHighlighterName();

    QCOMPARE(name.startsWith(QStringLiteral("KSyntaxHighlighting 5.")),
             highlighter->inherits("KSyntaxHighlighting::SyntaxHighlighter"));
    QCOMPARE(name.isEmpty(), !highlighter->inherits("KSyntaxHighlighting::SyntaxHighlighter"));
}

RPA_TEST_MAIN(tst_ProcessProgramEditor)

#include "tst_processprogrameditor.moc"
