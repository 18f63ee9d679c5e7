// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "RichEditorFixture.h"
#include "TestApp.h"

#include <QAction>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMenu>
#include <QTest>
#include <QTextEdit>

#include <memory>

using namespace RichEditorFixture;

// The dialogs that the editor opens, and an editor that is taken away while one is open.
class tst_WbRichEditorDialogs : public QObject
{
    Q_OBJECT

private slots:
    void writesInAChosenColour();
    void isTakenAwayWhileADialogIsOpen_data();
    void isTakenAwayWhileADialogIsOpen();

private:
    static void ChooseOtherColour(Editor& editor)
    {
        auto* button = editor.widget.findChild<QWidget*>(QStringLiteral("toolTextColour"));
        for (QMenu* menu : button->parentWidget()->findChildren<QMenu*>()) {
            for (QAction* action : menu->actions()) {
                if (action->text() == QStringLiteral("其他颜色…")) {
                    action->trigger();
                    return;
                }
            }
        }
        QFAIL("no such entry");
    }
};

void tst_WbRichEditorDialogs::writesInAChosenColour()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>主页</p>"));
    editor.SelectAll();
    ModalDriver modals;
    modals.ThenIn<QColorDialog>([](QColorDialog* colours) {
        colours->setCurrentColor(QColor(12, 34, 56));
        colours->accept();
    });

    ChooseOtherColour(editor);

    QCOMPARE(editor.view->textCursor().charFormat().foreground().color(), QColor(12, 34, 56));
}

void tst_WbRichEditorDialogs::isTakenAwayWhileADialogIsOpen_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("colour") << QString();
    QTest::newRow("link") << QStringLiteral("toolLink");
    QTest::newRow("picture") << QStringLiteral("toolPicture");
}

void tst_WbRichEditorDialogs::isTakenAwayWhileADialogIsOpen()
{
    QFETCH(QString, action);
    auto editor = std::make_unique<Editor>();
    editor->widget.Init(QStringLiteral("<p>主页</p>"));
    ModalDriver modals;
    modals.Then([&editor](QWidget*) { editor.reset(); });

    if (action.isEmpty())
        ChooseOtherColour(*editor);
    else
        editor->Press(action);

    QVERIFY(!editor);
    QCOMPARE(modals.GetSeenCount(), 1);
    QVERIFY(!QApplication::activeModalWidget());
}

RPA_TEST_MAIN(tst_WbRichEditorDialogs)

#include "tst_wbricheditor_dialogs.moc"
