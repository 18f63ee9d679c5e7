// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"

#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <memory>

// Dialogs that know nothing of each other come one after another.
class TestDialogTurn : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<QWidget>();
        window->resize(600, 400);
        window->show();
    }
    void cleanup() { window.reset(); }

    void opensAtOnceWhenNothingIsShown();
    void opensWhenTheExecutedOneHasGone();
    void holdsTheExecutedOneBackUntilItHasGone();
    void opensTwoInTheOrderInWhichTheyWereAnnounced();
    void letsAQuestionOfItsOwnLieOverIt();
    void forgetsOneThatIsDestroyedWhileItWaits();
    void goesOnWhenTheShownOneIsDestroyed();
    void rejectsTheExecutedOneThatIsDestroyedWhileItWaits();

private:
    WbBaseDialog* New(const char* name)
    {
        auto* dialog = new WbBaseDialog(window.get());
        dialog->setObjectName(QLatin1String(name));
        dialog->resize(200, 100);
        return dialog;
    }
    static QString Shown()
    {
        QStringList names;
        for (const QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && qobject_cast<const QDialog*>(widget))
                names << widget->objectName();
        return names.join(QLatin1Char(' '));
    }
    // Runs within the event loop of what is executed next.
    void Then(const std::function<void()>& act)
    {
        QMetaObject::invokeMethod(window.get(), act, Qt::QueuedConnection);
    }

    static void WhenShown(QDialog* dialog, const std::function<void()>& act)
    {
        auto* look = new QTimer(dialog);
        connect(look, &QTimer::timeout, dialog, [=] {
            if (dialog->isVisible()) {
                look->stop();
                act();
            }
        });
        look->start(1);
    }

    std::unique_ptr<QWidget> window;
};

void TestDialogTurn::opensAtOnceWhenNothingIsShown()
{
    auto* dialog = New("one");

    dialog->OpenInTurn();

    QCOMPARE(Shown(), QStringLiteral("one"));
    QCOMPARE(dialog->windowModality(), Qt::WindowModal);
}

void TestDialogTurn::opensWhenTheExecutedOneHasGone()
{
    auto* executed = New("executed");
    auto* turn = New("turn");
    QString during;
    Then([&] {
        turn->OpenInTurn();
        during = Shown();
        executed->accept();
    });

    QCOMPARE(executed->exec(), int(QDialog::Accepted));

    QCOMPARE(during, QStringLiteral("executed"));
    QTRY_COMPARE(Shown(), QStringLiteral("turn"));
}

void TestDialogTurn::holdsTheExecutedOneBackUntilItHasGone()
{
    auto* turn = New("turn");
    turn->OpenInTurn();
    auto* executed = New("executed");
    QString before;
    QString after;
    Then([&] {
        before = Shown();
        turn->accept();
        WhenShown(executed, [&] {
            after = Shown();
            executed->accept();
        });
    });

    QCOMPARE(executed->exec(), int(QDialog::Accepted));

    QCOMPARE(before, QStringLiteral("turn"));
    QCOMPARE(after, QStringLiteral("executed"));
}

void TestDialogTurn::opensTwoInTheOrderInWhichTheyWereAnnounced()
{
    auto* first = New("first");
    auto* second = New("second");
    auto* third = New("third");

    first->OpenInTurn();
    second->OpenInTurn();
    third->OpenInTurn();

    QCOMPARE(Shown(), QStringLiteral("first"));
    first->reject();
    QTRY_COMPARE(Shown(), QStringLiteral("second"));
    second->reject();
    QTRY_COMPARE(Shown(), QStringLiteral("third"));
}

void TestDialogTurn::letsAQuestionOfItsOwnLieOverIt()
{
    auto* turn = New("turn");
    turn->OpenInTurn();
    auto* inside = new QPushButton(turn);
    ModalDriver modals;
    modals.Then([&](QWidget* box) {
        QVERIFY(turn->isVisible());
        QVERIFY(ModalDriver::Press(box, QStringLiteral("是")));
    });

    const int answer =
        PackagedMsgBox::question(QStringLiteral("确定吗？"), inside, QMessageBox::Yes | QMessageBox::No);

    QCOMPARE(answer, int(QMessageBox::Yes));
}

void TestDialogTurn::forgetsOneThatIsDestroyedWhileItWaits()
{
    auto* first = New("first");
    auto* second = New("second");
    auto* third = New("third");
    first->OpenInTurn();
    second->OpenInTurn();
    third->OpenInTurn();

    delete second;
    first->reject();

    QTRY_COMPARE(Shown(), QStringLiteral("third"));
}

void TestDialogTurn::goesOnWhenTheShownOneIsDestroyed()
{
    auto* first = New("first");
    auto* second = New("second");
    first->OpenInTurn();
    second->OpenInTurn();
    auto* executed = New("executed");
    Then([&] {
        delete first;
        WhenShown(executed, [=] { executed->accept(); });
    });

    QCOMPARE(executed->exec(), int(QDialog::Accepted));

    QTRY_COMPARE(Shown(), QStringLiteral("second"));
}

void TestDialogTurn::rejectsTheExecutedOneThatIsDestroyedWhileItWaits()
{
    auto* turn = New("turn");
    turn->OpenInTurn();
    auto* executed = New("executed");
    Then([&] { delete executed; });

    QCOMPARE(executed->exec(), int(QDialog::Rejected));

    QCOMPARE(Shown(), QStringLiteral("turn"));
}

RPA_TEST_MAIN(TestDialogTurn)
#include "tst_dialogturn.moc"
