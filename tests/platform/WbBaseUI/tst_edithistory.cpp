// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <WbBaseUI/WbEditHistory.h>

#include <QTextCursor>
#include <QTextDocument>
#include <QUndoStack>
#include <QtTest>

#include <memory>

namespace
{
// Adds a number and takes it away again; those with an id of their own go on in the one before.
class Addition : public QUndoCommand
{
public:
    Addition(int* target, int value, int typing = -1) : sum(target), number(value), kind(typing) {}

    void redo() override { *sum += number; }
    void undo() override { *sum -= number; }
    int id() const override { return kind; }
    bool mergeWith(const QUndoCommand* next) override
    {
        number += static_cast<const Addition*>(next)->number;
        return true;
    }

private:
    int* const sum;
    int number;
    const int kind;
};
} // namespace

class EditHistoryTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void takesBackTheLastStepOfAnyPlace();
    void doesAgainWhatWasTakenBackLast();
    void forgetsWhatWasTakenBackOnceSomethingElseIsDone();
    void leavesOutWhatAPlaceTookBackByItself();
    void takesBackAStepThatWentOnAsOne();
    void changesNothingInALockedPlace();
    void leavesOutAPlaceThatIsGone();
    void takesBackWhatWasWritten();

private:
    void Left(int value) { left->push(new Addition(&leftSum, value)); }
    void Right(int value) { right->push(new Addition(&rightSum, value)); }

    WbEditHistory* const history = WbEditHistory::Instance();
    std::unique_ptr<QUndoStack> left;
    std::unique_ptr<QUndoStack> right;
    QWidget leftPlace;
    QWidget rightPlace;
    int leftSum = 0;
    int rightSum = 0;
};

void EditHistoryTest::init()
{
    leftSum = 0;
    rightSum = 0;
    left = std::make_unique<QUndoStack>();
    right = std::make_unique<QUndoStack>();
    history->Watch(left.get(), &leftPlace);
    history->Watch(right.get(), &rightPlace);
}

void EditHistoryTest::takesBackTheLastStepOfAnyPlace()
{
    QVERIFY(!history->CanUndo());
    Left(1);
    Right(20);
    Left(300);

    QCOMPARE(history->Undo(), &leftPlace);
    QCOMPARE(leftSum, 1);
    QCOMPARE(history->Undo(), &rightPlace);
    QCOMPARE(rightSum, 0);
    QCOMPARE(history->Undo(), &leftPlace);
    QCOMPARE(leftSum, 0);
    QVERIFY(!history->CanUndo());
    QCOMPARE(history->Undo(), nullptr);
}

void EditHistoryTest::doesAgainWhatWasTakenBackLast()
{
    Left(1);
    Right(20);
    history->Undo();
    history->Undo();

    QCOMPARE(history->Redo(), &leftPlace);
    QCOMPARE(leftSum, 1);
    QCOMPARE(rightSum, 0);
    QCOMPARE(history->Redo(), &rightPlace);
    QCOMPARE(rightSum, 20);
    QVERIFY(!history->CanRedo());
    QCOMPARE(history->Undo(), &rightPlace);
}

void EditHistoryTest::forgetsWhatWasTakenBackOnceSomethingElseIsDone()
{
    Left(1);
    history->Undo();
    QVERIFY(history->CanRedo());

    Right(20);

    QVERIFY(!history->CanRedo());
}

void EditHistoryTest::leavesOutWhatAPlaceTookBackByItself()
{
    Left(1);
    Right(20);
    Left(300);

    left->undo();

    QCOMPARE(history->Undo(), &rightPlace);
    QCOMPARE(leftSum, 1);
    QCOMPARE(rightSum, 0);
}

void EditHistoryTest::takesBackAStepThatWentOnAsOne()
{
    const auto type = [this](int value) { left->push(new Addition(&leftSum, value, 7)); };
    Left(1);
    Right(20);
    type(300);
    type(4000);
    Right(50000);
    type(600000);

    QCOMPARE(history->Undo(), &leftPlace);
    QCOMPARE(leftSum, 1);
    QCOMPARE(history->Undo(), &rightPlace);
    QCOMPARE(rightSum, 20);
    QCOMPARE(history->Undo(), &rightPlace);
    QCOMPARE(history->Undo(), &leftPlace);
    QCOMPARE(leftSum, 0);
    QCOMPARE(history->Redo(), &leftPlace);
    QCOMPARE(leftSum, 1);
}

void EditHistoryTest::changesNothingInALockedPlace()
{
    Left(1);
    Right(20);
    rightPlace.setEnabled(false);

    QVERIFY(!history->CanUndo()); // nor the step before, which is out of its turn
    QVERIFY(!history->Undo());
    QCOMPARE(leftSum, 1);
    QCOMPARE(rightSum, 20);

    rightPlace.setEnabled(true);
    QCOMPARE(history->Undo(), &rightPlace);
    rightPlace.setEnabled(false);
    QVERIFY(!history->CanRedo());
    rightPlace.setEnabled(true);
    QCOMPARE(history->Redo(), &rightPlace);
}

void EditHistoryTest::leavesOutAPlaceThatIsGone()
{
    Right(20);
    Left(1);

    left.reset();

    QCOMPARE(history->Undo(), &rightPlace);
    QCOMPARE(rightSum, 0);
    QVERIFY(!history->CanUndo());
}

void EditHistoryTest::takesBackWhatWasWritten()
{
    QTextDocument text;
    history->Watch(&text, &rightPlace);
    Left(1);
    QTextCursor(&text).insertText(QStringLiteral("字"));

    QCOMPARE(history->Undo(), &rightPlace);

    QCOMPARE(text.toPlainText(), QString());
    QCOMPARE(leftSum, 1);
    QCOMPARE(history->Redo(), &rightPlace);
    QCOMPARE(text.toPlainText(), QStringLiteral("字"));
}

RPA_TEST_MAIN(EditHistoryTest)
#include "tst_edithistory.moc"
