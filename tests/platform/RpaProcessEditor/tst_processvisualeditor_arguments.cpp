// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <WbBaseUI/WbTextLimit.h>

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

// What the property panel writes into a statement.
class tst_ProcessVisualEditorArguments : public QObject
{
    Q_OBJECT

private slots:
    void editsArgumentsAsTyped();
    void undoesTypingInOneField();
    void turnsALeadingEqualsSignIntoAnExpression();
    void keepsALeadingQuoteLiteral();
    void tellsWhatIsWrongWithAnArgument();
    void fieldsKeepTheirPlaceWhenAMessageComesAndGoes();
    void theNoteKeepsItsPlaceWhenTheOutputIsWrong();
    void theLongestMessageFitsTheNarrowestPanel();
    void offersChoicesProcessesAndSwitches();
    void editsOutputAndNote();
    void keepsTheNoteWhenTooMuchIsPasted();
    void typingIntoALongArgumentKeepsAllOfIt();
    void saysHowManyAreSelected();
};

void tst_ProcessVisualEditorArguments::editsArgumentsAsTyped()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    QVERIFY(text);
    QCOMPARE(text->text(), QStringLiteral("a"));

    text->setFocus();
    QTest::keyClick(text, Qt::Key_End);
    QTest::keyClicks(text, QStringLiteral("bc"));

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("abc"));
    QVERIFY(text->hasFocus());
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditorArguments::undoesTypingInOneField()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    QTest::keyClicks(text, QStringLiteral("xyz"));

    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("a"));
    QCOMPARE(editor.Field<QLineEdit>(QStringLiteral("text"))->text(), QStringLiteral("a"));
}

void tst_ProcessVisualEditorArguments::turnsALeadingEqualsSignIntoAnExpression()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    text->selectAll();

    QTest::keyClicks(text, QStringLiteral("="));
    QTRY_COMPARE(editor.widget.findChildren<QLineEdit*>(QStringLiteral("editor")).size(), 1);
    auto* expression = editor.Field<QLineEdit>(QStringLiteral("text"));
    QVERIFY(expression->hasFocus());
    QTest::keyClicks(expression, QStringLiteral("1+2"));

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("=1+2"));
    QCOMPARE(expression->text(), QStringLiteral("1+2"));
}

void tst_ProcessVisualEditorArguments::keepsALeadingQuoteLiteral()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    text->selectAll();

    QTest::keyClicks(text, QStringLiteral("'=s"));

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("''=s"));
    QCOMPARE(text->text(), QStringLiteral("'=s"));
}

void tst_ProcessVisualEditorArguments::tellsWhatIsWrongWithAnArgument()
{
    RpaStatement wait = Statement(QStringLiteral("t-wait"), QStringLiteral("w"));
    Editor editor({wait, Statement(QStringLiteral("t-log"), QStringLiteral("l"))});
    const auto problem = [&editor](const char* field) {
        const auto* widget =
            editor.widget.findChild<QWidget*>(QLatin1String("field_") + QLatin1String(field));
        const auto* label = widget->findChild<QLabel*>(QStringLiteral("labelProblem"));
        return label->isVisible() ? label->text() : QString();
    };

    editor.Click(QStringLiteral("w"));
    QCOMPARE(problem("seconds"), QString());
    QTest::keyClicks(editor.Field<QLineEdit>(QStringLiteral("seconds")), QStringLiteral("wait["));
    QVERIFY(problem("seconds").contains(QStringLiteral("括号")));

    editor.Click(QStringLiteral("l"));
    QCOMPARE(problem("text"), QStringLiteral("必须填写"));
}

void tst_ProcessVisualEditorArguments::fieldsKeepTheirPlaceWhenAMessageComesAndGoes()
{
    Editor editor({Statement(QStringLiteral("t-wait"), QStringLiteral("w"))});
    editor.Click(QStringLiteral("w"));
    auto* seconds = editor.Field<QLineEdit>(QStringLiteral("seconds"));
    const auto* problem = editor.widget.findChild<QWidget*>(QStringLiteral("field_seconds"))
                              ->findChild<QLabel*>(QStringLiteral("labelProblem"));
    const auto placeOfTheNext = [&editor] {
        editor.Find<QWidget>(QStringLiteral("propertyContent"))->layout()->activate();
        const auto* next = editor.Field<QWidget>(QStringLiteral("quiet"));
        return next->mapTo(&editor.widget, QPoint()).y();
    };
    const int place = placeOfTheNext();
    QVERIFY(!problem->isVisible());

    QTest::keyClicks(seconds, QStringLiteral("wait["));
    QVERIFY(problem->isVisible());
    QCOMPARE(placeOfTheNext(), place);

    QTest::keyClick(seconds, Qt::Key_Backspace);
    QVERIFY(!problem->isVisible());
    QCOMPARE(placeOfTheNext(), place);
}

void tst_ProcessVisualEditorArguments::theNoteKeepsItsPlaceWhenTheOutputIsWrong()
{
    Editor editor({Statement(QStringLiteral("t-read"), QStringLiteral("r"))});
    editor.Click(QStringLiteral("r"));
    auto* output = editor.Find<QLineEdit>(QStringLiteral("lineEditOutput"));
    const auto place = [&editor, output] {
        output->parentWidget()->layout()->activate();
        editor.Find<QWidget>(QStringLiteral("propertyContent"))->layout()->activate();
        return editor.Find<QWidget>(QStringLiteral("textEditNote"))->mapTo(&editor.widget, QPoint()).y();
    };
    QTest::keyClicks(output, QStringLiteral("x"));
    const int before = place();

    output->clear();
    QTest::keyClicks(output, QStringLiteral("9x"));

    QVERIFY(editor.Find<QLabel>(QStringLiteral("labelOutputProblem"))->isVisible());
    QCOMPARE(place(), before);
}

void tst_ProcessVisualEditorArguments::theLongestMessageFitsTheNarrowestPanel()
{
    Editor editor({Statement(QStringLiteral("t-wait"), QStringLiteral("w"))});
    editor.Click(QStringLiteral("w"));
    auto* panel = editor.Find<QWidget>(QStringLiteral("propertyPanel"));
    auto* splitter = editor.Find<QSplitter>(QStringLiteral("processSplitter"));
    splitter->setSizes({200, 5000, 1});
    QCOMPARE(panel->width(), panel->minimumWidth());

    QTest::keyClicks(editor.Field<QLineEdit>(QStringLiteral("seconds")), QStringLiteral("wait["));

    const auto* problem = editor.widget.findChild<QWidget*>(QStringLiteral("field_seconds"))
                              ->findChild<QLabel*>(QStringLiteral("labelProblem"));
    QVERIFY(problem->isVisible());
    QVERIFY2(problem->sizeHint().width() <= problem->width(),
             qPrintable(QStringLiteral("%1 > %2").arg(problem->sizeHint().width()).arg(problem->width())));
}

void tst_ProcessVisualEditorArguments::offersChoicesProcessesAndSwitches()
{
    Editor editor({Statement(QStringLiteral("t-call"), QStringLiteral("p")),
                   Statement(QStringLiteral("t-wait"), QStringLiteral("w"))});

    editor.Click(QStringLiteral("p"));
    auto* process = editor.Field<QComboBox>(QStringLiteral("process"));
    QCOMPARE(process->count(), 2);
    process->setFocus();
    QTest::keyClick(process, Qt::Key_Down);
    QTest::keyClick(process, Qt::Key_Down);
    QCOMPARE(editor.Node(QStringLiteral("p"))->GetArgument(QStringLiteral("process")),
             QStringLiteral("子流程"));

    editor.Click(QStringLiteral("w"));
    auto* quiet = editor.Field<QComboBox>(QStringLiteral("quiet"));
    quiet->setFocus();
    QTest::keyClick(quiet, Qt::Key_Down);
    QCOMPARE(editor.Node(QStringLiteral("w"))->GetArgument(QStringLiteral("quiet")), QStringLiteral("true"));
}

void tst_ProcessVisualEditorArguments::editsOutputAndNote()
{
    Editor editor({Statement(QStringLiteral("t-read"), QStringLiteral("r"))});
    editor.Click(QStringLiteral("r"));
    auto* output = editor.Find<QLineEdit>(QStringLiteral("lineEditOutput"));
    auto* problem = editor.Find<QLabel>(QStringLiteral("labelOutputProblem"));
    QVERIFY(problem->isVisible()); // the output is required

    QTest::keyClicks(output, QStringLiteral("9x"));
    QVERIFY(problem->isVisible());
    output->clear();
    QTest::keyClicks(output, QStringLiteral("x9"));
    QVERIFY(!problem->isVisible());
    QTest::keyClicks(editor.Find<QPlainTextEdit>(QStringLiteral("textEditNote")), QStringLiteral("why"));

    QCOMPARE(editor.Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("x9"));
    QCOMPARE(editor.Node(QStringLiteral("r"))->GetValues().note, QStringLiteral("why"));
}

void tst_ProcessVisualEditorArguments::keepsTheNoteWhenTooMuchIsPasted()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* note = editor.widget.findChild<QPlainTextEdit*>(QStringLiteral("textEditNote"));
    note->findChild<WbTextLimit*>()->SetMostBytes(2048);
    note->setFocus();
    QTest::keyClicks(note, QStringLiteral("before"));
    QGuiApplication::clipboard()->setText(QString(2048, QLatin1Char('y')));

    QTest::keyClick(note, Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetValues().note, QStringLiteral("before"));
}

void tst_ProcessVisualEditorArguments::typingIntoALongArgumentKeepsAllOfIt()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    text->selectAll();
    const QString argument(100000, QLatin1Char('x'));
    QGuiApplication::clipboard()->setText(argument);
    QTest::keyClick(text, Qt::Key_V, Qt::ControlModifier);

    QTest::keyClicks(text, QStringLiteral("y"));

    QVERIFY(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")) ==
            argument + QLatin1Char('y'));
}

void tst_ProcessVisualEditorArguments::saysHowManyAreSelected()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));

    editor.Click(QStringLiteral("e"), Qt::ControlModifier);

    QVERIFY(!editor.Field<QWidget>(QStringLiteral("text")));
    const auto labels = editor.Find<QWidget>(QStringLiteral("propertyPanel"))->findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [](const QLabel* label) { return label->text().contains(QStringLiteral("2")); }));
}

RPA_TEST_MAIN(tst_ProcessVisualEditorArguments)

#include "tst_processvisualeditor_arguments.moc"
