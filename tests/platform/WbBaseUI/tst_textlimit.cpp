// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/WbTextLimit.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTextDocument>
#include <QtTest>

#include <memory>

namespace
{
constexpr int most = 64 * 1024;

QString Text(int length)
{
    QString text(length, QLatin1Char('a'));
    for (int i = 0; i < length - 1; i += 64) // one line of all of it takes long to be laid out
        text[i] = QLatin1Char('\n');
    return text;
}
} // namespace

class TextLimitTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void takesAsMuchAsMayBe();
    void keepsWhatWasThereWhenTooMuchIsPasted();
    void keepsWhatWasTypedBeforeTheFullText();
    void letsCommandsPassInAFullText();
    void countsBytesNotCharacters();
    void letsATypedCharacterReplaceASelection();
    void takesBackAReplacementOfEverything();
    void leavesALoadedTextAlone();

private:
    void Paste(const QString& text);

    std::unique_ptr<QPlainTextEdit> edit;
    WbTextLimit* limit = nullptr;
};

void TextLimitTest::init()
{
    edit = std::make_unique<QPlainTextEdit>();
    limit = new WbTextLimit(edit.get(), QStringLiteral("代码"));
    limit->SetMostBytes(most);
    edit->show();
}

void TextLimitTest::Paste(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(edit.get(), Qt::Key_V, Qt::ControlModifier);
}

void TextLimitTest::takesAsMuchAsMayBe()
{
    const ToastWatcher toasts;

    Paste(Text(most));

    QCOMPARE(edit->toPlainText().size(), most);
    QCOMPARE(toasts.GetTexts(), QStringList());
}

void TextLimitTest::keepsWhatWasThereWhenTooMuchIsPasted()
{
    const ToastWatcher toasts;
    QTest::keyClicks(edit.get(), QStringLiteral("before "));

    Paste(Text(most));

    QCOMPARE(edit->toPlainText(), QStringLiteral("before "));
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("代码不能超过 1 MB，没有插入")});
    Paste(QStringLiteral("after"));
    QCOMPARE(edit->toPlainText(), QStringLiteral("before after"));
}

void TextLimitTest::keepsWhatWasTypedBeforeTheFullText()
{
    edit->setPlainText(Text(most - 520));
    edit->moveCursor(QTextCursor::End);
    const ToastWatcher toasts;

    QTest::keyClicks(edit.get(), QString(20, QLatin1Char('b')));
    QTest::keyClick(edit.get(), Qt::Key_Return);

    QVERIFY(edit->toPlainText().endsWith(QStringLiteral("abbbbbbbbb")));
    QCOMPARE(edit->toPlainText().size(), most - 511);
    QVERIFY(!toasts.GetTexts().isEmpty());
    QTest::keyClick(edit.get(), Qt::Key_Backspace);
    QCOMPARE(edit->toPlainText().size(), most - 512);
}

void TextLimitTest::letsCommandsPassInAFullText()
{
    edit->setPlainText(Text(most));
    const ToastWatcher toasts;

    QTest::keyClick(edit.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit.get(), Qt::Key_X, Qt::ControlModifier);

    QCOMPARE(edit->toPlainText(), QString());
    QCOMPARE(toasts.GetTexts(), QStringList());
}

void TextLimitTest::countsBytesNotCharacters()
{
    Paste(QString(most / 3, QChar(0x6D41)));
    QCOMPARE(edit->toPlainText().size(), most / 3);
    edit->clear();

    Paste(QString(most / 3 + 1, QChar(0x6D41)));

    QCOMPARE(edit->toPlainText(), QString());
}

void TextLimitTest::letsATypedCharacterReplaceASelection()
{
    edit->setPlainText(Text(most));
    edit->selectAll();

    QTest::keyClick(edit.get(), Qt::Key_B);

    QCOMPARE(edit->toPlainText(), QStringLiteral("b"));
}

// By a find bar, say.
void TextLimitTest::takesBackAReplacementOfEverything()
{
    edit->setPlainText(QStringLiteral("x x"));
    QTextCursor cursor(edit->document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(Text(most) + QLatin1Char('\n') + Text(most));
    cursor.endEditBlock();

    QCOMPARE(edit->toPlainText(), QStringLiteral("x x"));
}

void TextLimitTest::leavesALoadedTextAlone()
{
    const ToastWatcher toasts;

    edit->setPlainText(Text(most + 1));

    QCOMPARE(edit->toPlainText().size(), most + 1);
    QCOMPARE(toasts.GetTexts(), QStringList());
}

RPA_TEST_MAIN(TextLimitTest)
#include "tst_textlimit.moc"
