// SPDX-License-Identifier: Apache-2.0

#include "CodeAuthor.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/WbTheme.h>

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>

namespace
{
// Toasts need not have come when the last answer did.
template <typename Condition>
bool Comes(const Condition& condition)
{
    return QTest::qWaitFor(condition, CodeAuthor::patienceMs);
}

QStringList RowsOf(QWidget* dialog)
{
    QStringList rows;
    const auto* list = dialog->findChild<QListWidget*>(QStringLiteral("listCodePlaces"));
    for (int row = 0; row < list->count(); ++row)
        rows.append(list->item(row)->text().trimmed());
    return rows;
}

void PointAt(QPlainTextEdit* edit, int offset)
{
    QTextCursor cursor(edit->document());
    cursor.setPosition(offset);
    const QPoint place = edit->cursorRect(cursor).center() + QPoint(2, 0);
    QHelpEvent help(QEvent::ToolTip, place, edit->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(edit->viewport(), &help);
}
} // namespace

// Definitions, other names and explanations in the program editor, by keys, with the real jedi.
class tst_ProgramNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { WbTheme::Instance()->Apply(WbTheme::Scheme::Light); }
    void cleanup() { QToolTip::hideText(); }
    void goesToTheDefinition();
    void goesToTheDefinitionByTheMenu();
    void saysWhereADefinitionIs_data();
    void saysWhereADefinitionIs();
    void renamesWithAPreviewInOneStep();
    void renamesNothingWhenCancelled();
    void refusesWhatIsNoName();
    void refusesWhatIsDefinedElsewhere_data();
    void refusesWhatIsDefinedElsewhere();
    void explainsTheNameUnderThePointer();
    void explainsTheNameAtTheCursor();
    void leavesATipOfSomebodyElse();

private:
    ToastWatcher toasts;
};

void tst_ProgramNames::goesToTheDefinition()
{
    CodeAuthor author(
        QStringLiteral("'\U0001F600'\ndef 求和(甲, 乙):\n    return 甲 + 乙\nprint(求和|(1, 2))"));

    author.Key(Qt::Key_F12);

    QVERIFY(Comes([&] { return author.edit->textCursor().blockNumber() == 1; }));
    QCOMPARE(author.edit->textCursor().positionInBlock(), 4);
    QVERIFY(!author.app->GetModified());
}

void tst_ProgramNames::goesToTheDefinitionByTheMenu()
{
    CodeAuthor author(QStringLiteral("def first():\n    pass\n\nfirst()|"));
    const QTextBlock line = author.edit->document()->lastBlock();
    const QPoint place = author.edit->cursorRect(QTextCursor(line)).center() + QPoint(8, 0);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, author.edit->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(author.edit->viewport(), &asked);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    const auto actions = menu->actions();
    const auto goes = std::find_if(actions.begin(), actions.end(), [](const QAction* action) {
        return action->text() == QStringLiteral("转到定义");
    });
    QVERIFY(goes != actions.end());

    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(*goes).center());

    QVERIFY(Comes([&] { return author.edit->textCursor().blockNumber() == 0; }));
}

void tst_ProgramNames::saysWhereADefinitionIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");

    QTest::newRow("module of Python") << QStringLiteral("import json\njson.dump|s(1)")
                                      << QStringLiteral("“json.dumps”的定义在 ") << QStringLiteral(" 行");
    QTest::newRow("builtin") << QStringLiteral("prin|t(1)") << QStringLiteral("“builtins.print”")
                             << QStringLiteral("是 Python 自带的");
    QTest::newRow("of the workstation")
        << QStringLiteral("rpa.lo|g(1)") << QStringLiteral("“rpa.log”") << QStringLiteral("由工作站提供");
    QTest::newRow("nothing") << QStringLiteral("x = 1 +| 2") << QStringLiteral("没有找到光标处名称的定义")
                             << QString();
}

void tst_ProgramNames::saysWhereADefinitionIs()
{
    QFETCH(QString, text);
    QFETCH(QString, start);
    QFETCH(QString, end);
    toasts.Clear();
    CodeAuthor author(text);
    const int place = author.edit->textCursor().position();

    author.Key(Qt::Key_F12);

    QVERIFY(Comes([&] { return toasts.GetCount() == 1; }));
    QVERIFY2(toasts.GetTexts().first().startsWith(start), qPrintable(toasts.GetTexts().first()));
    QVERIFY2(toasts.GetTexts().first().endsWith(end), qPrintable(toasts.GetTexts().first()));
    QCOMPARE(author.edit->textCursor().position(), place);
}

void tst_ProgramNames::renamesWithAPreviewInOneStep()
{
    const QString before = QStringLiteral("数 = 1\nprint(数, 数)\n# 数\ndef f(数):\n    return 数");
    CodeAuthor author(QStringLiteral("数| = 1\nprint(数, 数)\n# 数\ndef f(数):\n    return 数"));
    QStringList rows;
    QString note;
    ModalDriver modals(std::chrono::milliseconds(CodeAuthor::patienceMs));
    modals.Then([&](QWidget* dialog) {
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditCodeName"));
        EditorFixture::Type(name, QStringLiteral("总数"));
        rows = RowsOf(dialog);
        note = dialog->findChild<QLabel*>(QStringLiteral("labelCodeRename"))->text();
        QTest::keyClick(name, Qt::Key_Return);
    });

    author.Key(Qt::Key_F2);
    QVERIFY(Comes([&] { return modals.GetPendingCount() == 0 && author.Text() != before; }));

    QCOMPARE(author.Text(), QStringLiteral("总数 = 1\nprint(总数, 总数)\n# 数\ndef f(数):\n    return 数"));
    QCOMPARE(rows.size(), 2);
    QVERIFY2(rows.at(1).endsWith(QStringLiteral("2  print(总数, 总数)")), qPrintable(rows.at(1)));
    QCOMPARE(note, QStringLiteral("将修改 3 处"));
    QCOMPARE(EditorFixture::Main(author.app)->GetProgramText(), author.Text());
    author.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(author.Text(), before);
}

void tst_ProgramNames::renamesNothingWhenCancelled()
{
    CodeAuthor author(QStringLiteral("count| = 1\nprint(count)"));
    ModalDriver modals(std::chrono::milliseconds(CodeAuthor::patienceMs));
    modals.Then([](QWidget* dialog) {
        EditorFixture::Type(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditCodeName")),
                            QStringLiteral("n"));
        QTest::keyClick(dialog, Qt::Key_Escape);
    });

    author.Key(Qt::Key_F2);
    QVERIFY(Comes([&] { return modals.GetPendingCount() == 0 && !QApplication::activeModalWidget(); }));

    QCOMPARE(author.Text(), QStringLiteral("count = 1\nprint(count)"));
    QVERIFY(!author.app->GetModified());
}

void tst_ProgramNames::refusesWhatIsNoName()
{
    CodeAuthor author(QStringLiteral("count| = 1\nother = count"));
    ModalDriver modals(std::chrono::milliseconds(CodeAuthor::patienceMs));
    modals.Then([](QWidget* dialog) {
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditCodeName"));
        const auto* button = dialog->findChild<QPushButton*>(QStringLiteral("pushButtonRename"));
        const auto* note = dialog->findChild<QLabel*>(QStringLiteral("labelCodeRename"));
        QVERIFY(!button->isEnabled()); // the same name
        for (const char* refused : {"", "2a", "a b", "class"}) {
            name->setText(QString::fromLatin1(refused));
            QVERIFY2(!button->isEnabled(), refused);
        }
        QCOMPARE(note->text(), QStringLiteral("“class”是 Python 的关键字"));
        name->setText(QStringLiteral("other"));
        QVERIFY(button->isEnabled());
        QVERIFY(note->text().contains(QStringLiteral("已经有“other”")));
        ModalDriver::Reject(dialog);
    });

    author.Key(Qt::Key_F2);

    QVERIFY(Comes([&] { return modals.GetPendingCount() == 0 && !QApplication::activeModalWidget(); }));
}

void tst_ProgramNames::refusesWhatIsDefinedElsewhere_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");

    QTest::newRow("builtin") << QStringLiteral("prin|t(1)")
                             << QStringLiteral("“print”不是在这个程序中定义的，不能在这里重命名");
    QTest::newRow("of the workstation")
        << QStringLiteral("rpa.lo|g(1)") << QStringLiteral("“log”不是在这个程序中定义的，不能在这里重命名");
    QTest::newRow("import") << QStringLiteral("import json\njso|n.dumps(1)")
                            << QStringLiteral("“json”是导入的名称，请在 import 语句中用 as 给它另一个名称");
    QTest::newRow("no name") << QStringLiteral("x = 1 +| 2") << QStringLiteral("光标处没有可以重命名的名称");
}

void tst_ProgramNames::refusesWhatIsDefinedElsewhere()
{
    QFETCH(QString, text);
    QFETCH(QString, reason);
    toasts.Clear();
    CodeAuthor author(text);
    const QString before = author.Text();

    author.Key(Qt::Key_F2);

    QVERIFY(Comes([&] { return toasts.GetCount() == 1; }));
    QCOMPARE(toasts.GetTexts().first(), reason);
    QCOMPARE(author.Text(), before);
}

void tst_ProgramNames::explainsTheNameUnderThePointer()
{
    CodeAuthor author(QStringLiteral("rpa.table_count()\n"));

    PointAt(author.edit, 6);

    QVERIFY(Comes([] { return QToolTip::isVisible(); }));
    QVERIFY2(QToolTip::text().contains(QStringLiteral("页面表格的行数。")), qPrintable(QToolTip::text()));
    QVERIFY(QToolTip::text().contains(QStringLiteral("table_count()")));
}

void tst_ProgramNames::explainsTheNameAtTheCursor()
{
    CodeAuthor author(
        QStringLiteral("'''<b>bold</b>'''\ndef f(x):\n    '''<img src=\"/etc/x\"> & more'''\nf|(1)"));

    author.Key(Qt::Key_I, Qt::ControlModifier);

    QVERIFY(Comes([] { return QToolTip::isVisible(); }));
    // Letter by letter, whatever it says.
    const QString shown =
        Qt::mightBeRichText(QToolTip::text()) ? QToolTip::text() : QToolTip::text().toHtmlEscaped();
    QVERIFY2(shown.contains(QStringLiteral("&lt;img src=")), qPrintable(QToolTip::text()));
}

void tst_ProgramNames::leavesATipOfSomebodyElse()
{
    CodeAuthor author(QStringLiteral("rpa.table_count()\nrpa.log|(1)"));
    PointAt(author.edit, 6);
    QToolTip::showText(author.page.mapToGlobal(QPoint(5, 5)), QStringLiteral("值：3"),
                       author.edit->viewport());

    // Whatever was asked before is answered when this is.
    author.Key(Qt::Key_F12);
    toasts.Clear();
    QVERIFY(Comes([this] { return toasts.GetCount() == 1; }));

    QCOMPARE(QToolTip::text(), QStringLiteral("值：3"));
}

RPA_TEST_MAIN(tst_ProgramNames)

#include "tst_programnames.moc"
