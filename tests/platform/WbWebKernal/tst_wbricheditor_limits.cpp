// SPDX-License-Identifier: Apache-2.0

#include "RichEditorFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QToolBar>

using namespace RichEditorFixture;

namespace
{
QString List(int items)
{
    return QLatin1String("<ul>") + QStringLiteral("<li>项</li>").repeated(items) + QLatin1String("</ul>");
}

QMimeData* Html(const QString& html)
{
    auto* data = new QMimeData; // the clipboard owns it
    data->setHtml(html);
    data->setText(QStringLiteral("x"));
    return data;
}

struct LimitedEditor : Editor
{
    QLabel* notice = widget.findChild<QLabel*>(QStringLiteral("richNoticeText"));
    QPushButton* offer = widget.findChild<QPushButton*>(QStringLiteral("richNoticeOffer"));
    QToolBar* bar = widget.findChild<QToolBar*>(QStringLiteral("richFormatBar"));
};
} // namespace

// A text that would take too long to lay out.
class tst_WbRichEditorLimits : public QObject
{
    Q_OBJECT

private slots:
    void showsTheWordsAndSaysWhy();
    void keepsTheVeryText();
    void editsTheWordsWhenTheAuthorSaysSo();
    void offersNoEditingOfAPart();
    void editsTheNextTextAsEver();
    void pastesTheWordsOfWhatIsTooMuch();
    void refusesAPasteThatMakesTheTextTooMuch();
};

void tst_WbRichEditorLimits::showsTheWordsAndSaysWhy()
{
    LimitedEditor editor;

    editor.widget.Init(List(20000));

    QVERIFY(editor.notice->isVisible());
    QVERIFY(editor.notice->text().contains(QStringLiteral("有一个列表超过 2000 项")));
    QVERIFY(!editor.bar->isEnabled());
    QVERIFY(editor.view->isReadOnly());
    QCOMPARE(editor.view->document()->begin().text(), QStringLiteral("项"));
    QVERIFY(!editor.view->document()->begin().textList());
}

void tst_WbRichEditorLimits::keepsTheVeryText()
{
    LimitedEditor editor;
    const QString text = List(2001);
    QSignalSpy changed(&editor.widget, &WbRichEditor::SigTextChanged);

    editor.widget.Init(text);
    editor.Type(QStringLiteral("x"));
    editor.Paste(Html(QStringLiteral("<p>y</p>")));

    QCOMPARE(editor.Text(), text);
    QCOMPARE(changed.size(), 0);
}

void tst_WbRichEditorLimits::editsTheWordsWhenTheAuthorSaysSo()
{
    LimitedEditor editor;
    const QString text = List(2001);
    editor.widget.Init(text);

    QTest::mouseClick(editor.offer, Qt::LeftButton);
    QVERIFY(!editor.notice->isVisible());
    QVERIFY(editor.bar->isEnabled());
    QCOMPARE(editor.Text(), text);
    QTest::keyClick(editor.view, Qt::Key_Home, Qt::ControlModifier);
    editor.Type(QStringLiteral("!"));

    QVERIFY(editor.Text().startsWith(QStringLiteral("<p>!项</p>\n<p>项</p>\n")));
    editor.Press(QStringLiteral("toolUndo"));
    QCOMPARE(editor.Text(), text);
}

void tst_WbRichEditorLimits::offersNoEditingOfAPart()
{
    LimitedEditor editor;
    const QString text = QStringLiteral("<p>很长的一段</p>").repeated(60000);

    editor.widget.Init(text);

    QVERIFY(editor.notice->text().contains(QStringLiteral("只显示开头部分")));
    QVERIFY(!editor.offer->isVisible());
    QVERIFY(editor.view->isReadOnly());
    QCOMPARE(editor.Text(), text);
}

void tst_WbRichEditorLimits::editsTheNextTextAsEver()
{
    LimitedEditor editor;
    editor.widget.Init(List(2001));

    editor.widget.Init(List(2000));
    editor.Type(QStringLiteral("!"));

    QVERIFY(!editor.notice->isVisible());
    QVERIFY(editor.bar->isEnabled());
    QVERIFY(editor.Text().startsWith(QStringLiteral("<ul><li>!项</li>\n<li>项")));
}

void tst_WbRichEditorLimits::pastesTheWordsOfWhatIsTooMuch()
{
    LimitedEditor editor;
    const ToastWatcher toasts;
    editor.Type(QStringLiteral("a"));

    editor.Paste(Html(List(3000)));

    QVERIFY(editor.Text().startsWith(QStringLiteral("<p>a项</p>\n<p>项</p>")));
    QTRY_COMPARE(toasts.GetTexts(),
                 QStringList{QStringLiteral("粘贴的内容有一个列表超过 2000 项，已只粘贴文字")});
}

void tst_WbRichEditorLimits::refusesAPasteThatMakesTheTextTooMuch()
{
    LimitedEditor editor;
    const ToastWatcher toasts;
    editor.Type(QStringLiteral("ab"));
    const QString before = editor.Text();
    auto* data = new QMimeData;
    data->setText(QStringLiteral("x").repeated(20000));

    editor.Paste(data);

    QCOMPARE(editor.Text(), before);
    QTRY_COMPARE(toasts.GetTexts(),
                 QStringList{QStringLiteral("没有粘贴：粘贴后使用说明有一段超过 20000 字")});
}

RPA_TEST_MAIN(tst_WbRichEditorLimits)

#include "tst_wbricheditor_limits.moc"
