// SPDX-License-Identifier: Apache-2.0

#include "CodeAuthor.h"
#include "TestApp.h"

#include <WbBaseUI/WbTheme.h>

#include <QTest>
#include <QTextBlock>

namespace
{
const QString program = QStringLiteral("def a():\n" // 0
                                       "    x = 1\n"
                                       "    if x:\n" // 2
                                       "        y = 2\n"
                                       "\n"
                                       "        z = 3\n" // 5
                                       "\n"
                                       "def b():\n" // 7
                                       "    return 1\n"
                                       "last = 1");

// The lines that are shown, from 0.
QString Shown(const CodeAuthor& author)
{
    QStringList lines;
    for (QTextBlock block = author.edit->document()->begin(); block.isValid(); block = block.next())
        if (block.isVisible())
            lines.append(QString::number(block.blockNumber()));
    return lines.join(QLatin1Char(' '));
}

void GoTo(CodeAuthor& author, int line)
{
    author.edit->setTextCursor(QTextCursor(author.edit->document()->findBlockByNumber(line)));
}

void PressTriangle(CodeAuthor& author, int line)
{
    auto* strip = author.edit->findChild<QWidget*>(QStringLiteral("codeFoldStrip"));
    const QTextCursor cursor(author.edit->document()->findBlockByNumber(line));
    QTest::mouseClick(strip, Qt::LeftButton, Qt::NoModifier,
                      QPoint(strip->width() / 2, author.edit->cursorRect(cursor).center().y()));
}
} // namespace

// Folding in the program editor, by mouse and keys.
class tst_CodeFolds : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { WbTheme::Instance()->Apply(WbTheme::Scheme::Light); }
    void foldsByTheMouse();
    void foldsTheBlockAroundTheCursor();
    void foldsAndOpensAll();
    void keepsWhatIsFoldedWithin();
    void opensForTheCursor();
    void staysFoldedWhenItsFirstLineIsEdited();
    void opensWhenItsLinesChange_data();
    void opensWhenItsLinesChange();
    void neverChangesTheText();
    void isForgottenWithTheText();
};

void tst_CodeFolds::foldsByTheMouse()
{
    CodeAuthor author(program);

    PressTriangle(author, 7);
    QCOMPARE(Shown(author), QStringLiteral("0 1 2 3 4 5 6 7 9"));
    PressTriangle(author, 0);
    QCOMPARE(Shown(author), QStringLiteral("0 6 7 9"));
    PressTriangle(author, 9); // no triangle
    PressTriangle(author, 7);

    QCOMPARE(Shown(author), QStringLiteral("0 6 7 8 9"));
}

void tst_CodeFolds::foldsTheBlockAroundTheCursor()
{
    CodeAuthor author(program);
    GoTo(author, 5);

    author.Key(Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(Shown(author), QStringLiteral("0 1 2 6 7 8 9"));
    QCOMPARE(author.edit->textCursor().blockNumber(), 2);

    author.Key(Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(Shown(author), QStringLiteral("0 1 2 3 4 5 6 7 8 9"));
}

void tst_CodeFolds::foldsAndOpensAll()
{
    CodeAuthor author(program);

    author.Key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Shown(author), QStringLiteral("0 6 7 9"));

    author.Key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Shown(author), QStringLiteral("0 1 2 3 4 5 6 7 8 9"));
}

void tst_CodeFolds::keepsWhatIsFoldedWithin()
{
    CodeAuthor author(program);
    PressTriangle(author, 2);
    PressTriangle(author, 0);
    QCOMPARE(Shown(author), QStringLiteral("0 6 7 8 9"));

    PressTriangle(author, 0);

    QCOMPARE(Shown(author), QStringLiteral("0 1 2 6 7 8 9"));
}

void tst_CodeFolds::opensForTheCursor()
{
    CodeAuthor author(program);
    PressTriangle(author, 2);
    PressTriangle(author, 0);
    PressTriangle(author, 7);

    author.page.ShowLine(4);

    QCOMPARE(Shown(author), QStringLiteral("0 1 2 3 4 5 6 7 9"));
}

void tst_CodeFolds::staysFoldedWhenItsFirstLineIsEdited()
{
    CodeAuthor author(program);
    PressTriangle(author, 0);
    GoTo(author, 0);

    author.Write(QStringLiteral("async "));

    QCOMPARE(Shown(author), QStringLiteral("0 6 7 8 9"));
}

void tst_CodeFolds::opensWhenItsLinesChange_data()
{
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("a line comes behind its first one") << Qt::Key_Return;
    QTest::newRow("its first line is as deep as they are") << Qt::Key_Tab;
}

void tst_CodeFolds::opensWhenItsLinesChange()
{
    QFETCH(Qt::Key, key);
    CodeAuthor author(program);
    PressTriangle(author, 0);
    GoTo(author, 0);
    if (key != Qt::Key_Tab)
        author.Key(Qt::Key_End);

    author.Key(key);

    QStringList all;
    for (int number = 0; number < author.edit->blockCount(); ++number)
        all.append(QString::number(number));
    QCOMPARE(Shown(author), all.join(QLatin1Char(' ')));
}

void tst_CodeFolds::neverChangesTheText()
{
    CodeAuthor author(program);

    author.Key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(author.Text(), program);
    QVERIFY(!author.app->GetModified());
    QVERIFY(!author.edit->document()->isUndoAvailable());
}

void tst_CodeFolds::isForgottenWithTheText()
{
    CodeAuthor author(program);
    PressTriangle(author, 0);

    EditorFixture::Main(author.app)->SetProgramText(program + QStringLiteral("\n# more"));

    QCOMPARE(Shown(author), QStringLiteral("0 1 2 3 4 5 6 7 8 9 10"));
}

RPA_TEST_MAIN(tst_CodeFolds)

#include "tst_codefolds.moc"
