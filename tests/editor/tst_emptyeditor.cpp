// SPDX-License-Identifier: Apache-2.0

#include "EditorDriver.h"
#include "EditorWorld.h"
#include "TestApp.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>

namespace
{
// Closes every dialog and menu that comes, as a user who changed his mind; agrees first where asked to.
class Dismisser : public QObject
{
    Q_OBJECT

public:
    explicit Dismisser(bool agrees) : agree(agrees)
    {
        connect(&timer, &QTimer::timeout, this, &Dismisser::Dismiss);
        timer.start(1);
    }

    int seen = 0;

private:
    void Dismiss()
    {
        if (QWidget* popup = QApplication::activePopupWidget()) {
            popup->close();
            return;
        }
        QWidget* const modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        ++seen;
        if (agree && modal != agreed) {
            agreed = modal;
            for (QLineEdit* edit : modal->findChildren<QLineEdit*>())
                edit->setText(QStringLiteral("名称"));
            for (auto* button : modal->findChildren<QAbstractButton*>()) {
                if (button->isVisible() && button->text() == QStringLiteral("确定")) {
                    button->click();
                    return;
                }
            }
        }
        if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
        else
            modal->close();
    }

    const bool agree;
    QPointer<QWidget> agreed;
    QTimer timer;
};
} // namespace

// An editor before it was told which app to open: whatever its user does, it stays.
class EmptyEditorTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }
    void init() { world.SignIn(); }

    void standsEveryButton_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<bool>("agrees");
        for (const char* page : {"pushButtonUI", "pushButtonProcess", "pushButtonExtend"}) {
            QTest::addRow("%s, refusing", page) << QByteArray(page) << false;
            QTest::addRow("%s, agreeing", page) << QByteArray(page) << true;
        }
    }

    void standsEveryButton()
    {
        QFETCH(QByteArray, page);
        QFETCH(bool, agrees);
        EditorDriver author;
        author.ShowPage(page);
        const Dismisser user(agrees);
        int pressed = 0;

        const auto buttons = author.GetEditor()->findChildren<QAbstractButton*>();
        QVector<QPointer<QAbstractButton>> all;
        for (QAbstractButton* button : buttons)
            all.append(button);
        for (const auto& button : all) {
            if (button && button->isVisible() && button->isEnabled()) {
                QTest::mouseClick(button, Qt::LeftButton);
                ++pressed;
            }
        }

        QVERIFY(pressed > 3); // fewer where there is no browser
        QVERIFY(author.GetEditor());
        QTRY_VERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void standsTyping_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::newRow("pages") << QByteArray("pushButtonUI");
        QTest::newRow("process") << QByteArray("pushButtonProcess");
        QTest::newRow("instructions") << QByteArray("pushButtonExtend");
    }

    void standsTyping()
    {
        QFETCH(QByteArray, page);
        EditorDriver author;
        author.ShowPage(page);
        const Dismisser user(false);
        int typed = 0;

        const auto widgets = author.GetEditor()->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            if (!widget->isVisible() || !widget->isEnabled() || widget->focusPolicy() == Qt::NoFocus)
                continue;
            QTest::keyClicks(widget, QStringLiteral("ab"));
            for (const auto key : {Qt::Key_F2, Qt::Key_Delete, Qt::Key_Return, Qt::Key_Down})
                QTest::keyClick(widget, key);
            QTest::keyClick(widget, Qt::Key_Z, Qt::ControlModifier);
            QTest::keyClick(widget, Qt::Key_V, Qt::ControlModifier);
            ++typed;
        }

        QVERIFY(typed > 0);
        QVERIFY(author.GetEditor());
    }

    void opensAnAppAllTheSame()
    {
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        {
            const Dismisser user(true);
            author.Press("pushButtonSaveAs");
            author.Press("pushButtonSave");
            author.ShowPage("pushButtonExtend");
            QTest::keyClicks(author.Find<QTextEdit>("richTextView"), QStringLiteral("too early"));
        }

        author.GetEditor()->SetExecuteInfo(app);

        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        QCOMPARE(world.GetVersionNames(app), QStringList{QStringLiteral("版本1")});
    }

private:
    EditorWorld world;
};

RPA_TEST_MAIN(EmptyEditorTest)
#include "tst_emptyeditor.moc"
