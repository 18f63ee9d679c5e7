// SPDX-License-Identifier: Apache-2.0

#include "RichEditorFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/WbTextLimit.h>

#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QToolButton>

using namespace RichEditorFixture;

// The text that is given, given back and announced, and what helps to write it.
class tst_WbRichEditor : public QObject
{
    Q_OBJECT

private slots:
    void givesTheTextAsItWasGivenUntilAnEdit_data();
    void givesTheTextAsItWasGivenUntilAnEdit();
    void emitsNothingWhileLoading();
    void emitsTheFullTextOncePerChange();
    void emitsNothingWhenTheCursorMoves();
    void keepsTheTextWhenTooMuchIsPasted();
    void keepsTheTextWhenOnePictureTooManyIsPasted();
    void emitsNothingWhenAFormatIsThereAlready();
    void givesTheLoadedTextAgainWhenEverythingIsUndone();
    void keepsItsOwnTextThroughLoadingAndEditing_data();
    void keepsItsOwnTextThroughLoadingAndEditing();
    void findsTextInBothDirections();
    void marksTheNextTextWhileItSearches();
    void marksNothingInTheNextTextOnceItIsClosed();
    void tellsWhatToWriteWhileEmpty();
    void namesAndExplainsItsButtons();
};

void tst_WbRichEditor::givesTheTextAsItWasGivenUntilAnEdit_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QString();
    QTest::newRow("plain text") << QStringLiteral("第一行\n第二行  两个空格");
    QTest::newRow("own format") << QStringLiteral("<p>你好</p>");
    QTest::newRow("foreign html") << QStringLiteral(
        "<html><body><div>x<script>y()</script></div></body></html>");
    QTest::newRow("not well-formed") << QStringLiteral("<p><b>x</p><table><tr>");
}

void tst_WbRichEditor::givesTheTextAsItWasGivenUntilAnEdit()
{
    QFETCH(QString, text);
    Editor editor;

    editor.widget.Init(text);

    QCOMPARE(editor.Text(), text);
}

void tst_WbRichEditor::emitsNothingWhileLoading()
{
    Editor editor;
    QSignalSpy changes(&editor.widget, &WbRichEditor::SigTextChanged);

    editor.widget.Init(QStringLiteral("<p>一</p>"));
    editor.widget.Init(QStringLiteral("<p>二</p>"));
    QCoreApplication::processEvents();

    QCOMPARE(changes.count(), 0);
}

void tst_WbRichEditor::emitsTheFullTextOncePerChange()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>ab</p>"));
    QSignalSpy changes(&editor.widget, &WbRichEditor::SigTextChanged);

    QTest::keyClick(editor.view, Qt::Key_End);
    editor.Type(QStringLiteral("c"));
    editor.Type(QStringLiteral("d"));

    QCOMPARE(changes.count(), 2);
    QCOMPARE(changes.at(0).at(0).toString(), QStringLiteral("<p>abc</p>"));
    QCOMPARE(changes.at(1).at(0).toString(), QStringLiteral("<p>abcd</p>"));
    QCOMPARE(editor.Text(), QStringLiteral("<p>abcd</p>"));
}

void tst_WbRichEditor::keepsTheTextWhenTooMuchIsPasted()
{
    Editor editor;
    editor.widget.findChild<WbTextLimit*>()->SetMostBytes(4096);
    editor.Type(QStringLiteral("before"));
    const QString before = editor.Text();
    const ToastWatcher toasts;
    QSignalSpy changes(&editor.widget, &WbRichEditor::SigTextChanged);

    auto* data = new QMimeData;
    data->setText(QString(4096, QLatin1Char('x')));
    editor.Paste(data);

    QCOMPARE(editor.Text(), before);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("使用说明不能超过 1 MB，没有插入")});
    editor.Type(QStringLiteral(" after"));
    QVERIFY2(editor.Text().contains(QStringLiteral("before after")), qPrintable(editor.Text()));
}

// The same picture stands in the text as often as it is shown.
void tst_WbRichEditor::keepsTheTextWhenOnePictureTooManyIsPasted()
{
    Editor editor;
    const QImage picture = SomePicture(30, 20);
    const QString uri = DataUriOf(picture);
    const int room = 3 * uri.size();
    editor.widget.findChild<WbTextLimit*>()->SetMostBytes(room);
    const ToastWatcher toasts;
    for (int i = 0; i < 3; ++i) {
        auto* data = new QMimeData;
        data->setImageData(picture);
        editor.Paste(data);
    }

    QCOMPARE(editor.Text().count(QStringLiteral("<img")), 2);
    QVERIFY(editor.Text().toUtf8().size() <= room);
    QCOMPARE(toasts.GetCount(), 1);
}

void tst_WbRichEditor::emitsNothingWhenTheCursorMoves()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>ab</p>"));
    QSignalSpy changes(&editor.widget, &WbRichEditor::SigTextChanged);

    QTest::keyClick(editor.view, Qt::Key_End);
    QTest::keyClick(editor.view, Qt::Key_Left, Qt::ShiftModifier);
    QTest::mouseClick(editor.view->viewport(), Qt::LeftButton, {}, QPoint(5, 5));

    QCOMPARE(changes.count(), 0);
}

void tst_WbRichEditor::emitsNothingWhenAFormatIsThereAlready()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<h2>标题</h2>"));
    QSignalSpy changes(&editor.widget, &WbRichEditor::SigTextChanged);

    QTest::keyClick(editor.view, Qt::Key_2, Qt::ControlModifier | Qt::AltModifier);
    editor.Press(QStringLiteral("toolAlignLeft"));
    QTest::keyClick(editor.view, Qt::Key_End);
    editor.Press(QStringLiteral("toolItalic")); // for what is typed next only

    QCOMPARE(changes.count(), 0);
}

void tst_WbRichEditor::givesTheLoadedTextAgainWhenEverythingIsUndone()
{
    Editor editor;
    const QString loaded = QStringLiteral("<div>foreign <font size=7>text</font></div>");
    editor.widget.Init(loaded);
    QSignalSpy changes(&editor.widget, &WbRichEditor::SigTextChanged);

    editor.Type(QStringLiteral("x"));
    QTest::keyClick(editor.view, Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(changes.count(), 2);
    QCOMPARE(changes.at(1).at(0).toString(), loaded);
}

void tst_WbRichEditor::keepsItsOwnTextThroughLoadingAndEditing_data()
{
    QTest::addColumn<QString>("html");

    QTest::newRow("paragraphs") << QStringLiteral("<p>一</p>\n<p>二</p>");
    QTest::newRow("empty paragraph") << QStringLiteral(
        "<p>一</p>\n<p style=\"-qt-paragraph-type:empty\"><br></p>\n<p>三</p>");
    QTest::newRow("spaces") << QStringLiteral("<p>a &nbsp;b &nbsp; c</p>");
    QTest::newRow("markup as text") << QStringLiteral("<p>&lt;b&gt; &amp;amp; &quot;x&quot;</p>");
    QTest::newRow("line break") << QStringLiteral("<p>a<br>b</p>");
    QTest::newRow("inline") << QStringLiteral(
        "<p><b>b</b><i>i</i><u>u</u><s>s</s><b><i><u><s>all</s></u></i></b></p>");
    QTest::newRow("colours") << QStringLiteral(
        "<p><span style=\"color:#e5484d\">a</span><span "
        "style=\"color:#1f2329;background-color:#ffe58a\">b</span></p>");
    QTest::newRow("headings") << QStringLiteral(
        "<h1>一</h1>\n<h2>二 <i>x</i></h2>\n<h3>三</h3>\n<p>正文</p>");
    QTest::newRow("alignment") << QStringLiteral(
        "<p style=\"text-align:center\">a</p>\n<p style=\"text-align:right\">b</p>\n<p>c</p>");
    QTest::newRow("indent") << QStringLiteral("<p style=\"margin-left:80px\">a</p>\n<p>b</p>");
    QTest::newRow("lists") << QStringLiteral(
        "<ul><li>a</li>\n<li>b</li></ul>\n<p>x</p>\n<ol><li>1</li>\n<li>2</li></ol>");
    QTest::newRow("nested list") << QStringLiteral(
        "<ul><li>a<ul><li>b</li>\n<li>c</li></ul></li>\n<li>d</li></ul>");
    QTest::newRow("list in list of other kind")
        << QStringLiteral("<ol><li>a<ul><li>b</li></ul></li>\n<li>c</li></ol>");
    QTest::newRow("link") << QStringLiteral(
        "<p>a <a href=\"https://example.com/?q=1&amp;r=2\">链接</a> b <a href=\"mailto:a@b.cn\">m</a></p>");
    QTest::newRow("table") << QStringLiteral(
        "<p>x</p>\n<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\" width=\"100%\">\n"
        "<tr><td><p>a</p>\n</td><td><p><b>b</b></p>\n</td></tr>\n"
        "<tr><td colspan=\"2\"><p>c</p>\n<p>d</p>\n</td></tr>\n</table>\n<p>y</p>");
    QTest::newRow("table alone") << QStringLiteral(
        "<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\" width=\"100%\">\n"
        "<tr><td><p "
        "style=\"-qt-paragraph-type:empty\"><br></p>\n</td><td><ul><li>x</li></ul>\n</td></tr>\n</table>");
    QTest::newRow("picture") << QStringLiteral("<p>x<img src=\"%1\" width=\"20\" height=\"10\">y</p>")
                                    .arg(DataUriOf(SomePicture(40, 20)));
}

void tst_WbRichEditor::keepsItsOwnTextThroughLoadingAndEditing()
{
    QFETCH(QString, html);
    Editor editor;
    editor.widget.Init(html);

    // An edit and its reverse by hand, so that the text is written anew.
    QTest::keyClick(editor.view, Qt::Key_End, Qt::ControlModifier);
    editor.Type(QStringLiteral("x"));
    const QString edited = editor.Text();
    QTest::keyClick(editor.view, Qt::Key_Backspace);
    QCOMPARE(editor.Text(), html);

    Editor second;
    second.widget.Init(edited);
    QTest::keyClick(second.view, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(second.view, Qt::Key_Backspace);
    QCOMPARE(second.Text(), html);
}

void tst_WbRichEditor::findsTextInBothDirections()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>step 一</p>\n<p>step 二</p>\n<p>step 三</p>"));
    auto* bar = editor.widget.findChild<QWidget*>(QStringLiteral("richFindBar"));
    QVERIFY(!bar->isVisible());

    QTest::keyClick(editor.view, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(bar->isVisible());
    auto* edit = editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    QTest::keyClicks(edit, QStringLiteral("step"));
    QCOMPARE(editor.widget.findChild<QLabel*>(QStringLiteral("labelFindCount"))->text(),
             QStringLiteral("共 3 处"));
    QCOMPARE(editor.view->textCursor().blockNumber(), 0);

    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(editor.view->textCursor().blockNumber(), 1);
    QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier); // around the start
    QCOMPARE(editor.view->textCursor().blockNumber(), 2);

    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!bar->isVisible());
}

void tst_WbRichEditor::marksTheNextTextWhileItSearches()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>step 一</p>\n<p>step 二</p>\n<p>step 三</p>"));
    auto* edit = editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    auto* count = editor.widget.findChild<QLabel*>(QStringLiteral("labelFindCount"));
    QTest::keyClick(editor.view, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(edit, QStringLiteral("step"));
    QCOMPARE(editor.view->extraSelections().size(), 3);

    editor.widget.Init(QStringLiteral("<p>another</p>\n<p>one step</p>"));

    QCOMPARE(count->text(), QStringLiteral("共 1 处"));
    QCOMPARE(editor.view->extraSelections().size(), 1);
    QCOMPARE(editor.view->extraSelections().constFirst().cursor.document(), editor.view->document());
    QTest::keyClick(edit, Qt::Key_Backspace); // "ste"
    QCOMPARE(editor.view->extraSelections().size(), 1);
}

void tst_WbRichEditor::marksNothingInTheNextTextOnceItIsClosed()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>step 一</p>"));
    QTest::keyClick(editor.view, Qt::Key_F, Qt::ControlModifier);
    auto* edit = editor.widget.findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    QTest::keyClicks(edit, QStringLiteral("step"));
    QTest::keyClick(edit, Qt::Key_Escape);

    editor.widget.Init(QStringLiteral("<p>step 二</p>"));

    QVERIFY(editor.view->extraSelections().isEmpty());
}

void tst_WbRichEditor::tellsWhatToWriteWhileEmpty()
{
    Editor editor;

    QVERIFY(editor.view->placeholderText().contains(QStringLiteral("使用说明")));
    const QImage empty = editor.view->viewport()->grab().toImage();
    editor.Type(QStringLiteral("x"));
    QVERIFY(editor.view->viewport()->grab().toImage() != empty);
}

void tst_WbRichEditor::namesAndExplainsItsButtons()
{
    Editor editor;

    const auto buttons = editor.widget.findChildren<QToolButton*>();
    for (const QToolButton* button : buttons) {
        if (button->objectName() == QLatin1String("qt_toolbar_ext_button") ||
            button->inherits("QLineEditIconButton") || qobject_cast<QLineEdit*>(button->parentWidget()))
            continue;
        QVERIFY2(!button->accessibleName().isEmpty(), qPrintable(button->objectName()));
        QVERIFY2(!button->toolTip().isEmpty(), qPrintable(button->objectName()));
    }
    QCOMPARE(editor.widget.findChild<QToolButton*>(QStringLiteral("toolBoldButton"))->toolTip(),
             QStringLiteral("加粗（Ctrl+B）"));
}

RPA_TEST_MAIN(tst_WbRichEditor)

#include "tst_wbricheditor.moc"
