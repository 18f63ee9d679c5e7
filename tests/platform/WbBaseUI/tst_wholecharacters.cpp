// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbLineEdit.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QtTest>

// A line that takes six units, with four in it; an emoji takes two.
class WholeCharactersTest : public QObject
{
    Q_OBJECT

private slots:
    void aPastedTextEndsBeforeTheCharacterThatHasNoRoom();
    void aTypedCharacterWithoutRoomLeavesNothing();
    void whatWasPastedBeforeTheEndKeepsItsEnd();
    void aNameThatIsSetEndsWithAWholeCharacter();
    void aVersionNameEndsWithAWholeCharacter();
    void wholeOnesStay();

private:
    static void Paste(QLineEdit* line, const QString& text);
};

void WholeCharactersTest::Paste(QLineEdit* line, const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
}

void WholeCharactersTest::aPastedTextEndsBeforeTheCharacterThatHasNoRoom()
{
    WbLineEdit line;
    line.setMaxLength(6);
    line.setText(QStringLiteral("对账"));

    Paste(&line, QStringLiteral("abc😀"));

    QCOMPARE(line.text(), QStringLiteral("对账abc"));
    QCOMPARE(line.cursorPosition(), 5);
    line.undo();
    QCOMPARE(line.text(), QStringLiteral("对账"));
    line.redo();
    QCOMPARE(line.text(), QStringLiteral("对账abc"));
}

void WholeCharactersTest::aTypedCharacterWithoutRoomLeavesNothing()
{
    WbLineEdit line;
    line.setMaxLength(6);
    line.setText(QStringLiteral("对账abc"));

    line.insert(QStringLiteral("😀"));

    QCOMPARE(line.text(), QStringLiteral("对账abc"));
}

void WholeCharactersTest::whatWasPastedBeforeTheEndKeepsItsEnd()
{
    WbLineEdit line;
    line.setMaxLength(6);
    line.setText(QStringLiteral("对账"));
    line.setCursorPosition(1);

    Paste(&line, QStringLiteral("abc😀"));

    QCOMPARE(line.text(), QStringLiteral("对abc账"));
    QCOMPARE(line.cursorPosition(), 4);
}

void WholeCharactersTest::aNameThatIsSetEndsWithAWholeCharacter()
{
    WbLineEdit line;
    line.setMaxLength(6);

    line.setText(QStringLiteral("😀😀a😀😀"));

    QCOMPARE(line.text(), QStringLiteral("😀😀a"));
}

void WholeCharactersTest::aVersionNameEndsWithAWholeCharacter()
{
    WbEditableCombo combo;
    combo.SetMaxLength(6);

    Paste(combo.lineEdit(), QStringLiteral("版本一二三😀"));

    QCOMPARE(combo.currentText(), QStringLiteral("版本一二三"));
}

void WholeCharactersTest::wholeOnesStay()
{
    WbLineEdit line;
    line.setMaxLength(6);

    Paste(&line, QStringLiteral("😀ab😀"));

    QCOMPARE(line.text(), QStringLiteral("😀ab😀"));
}

RPA_TEST_MAIN(WholeCharactersTest)
#include "tst_wholecharacters.moc"
