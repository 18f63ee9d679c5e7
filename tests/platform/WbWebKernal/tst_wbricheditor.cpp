#include "ModalDriver.h"
#include "TestApp.h"

#include <WbWebKernal/WbRichEditor.h>

#include <QAction>
#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextTable>
#include <QToolButton>
#include <QUrl>
#include <QtEndian>

namespace
{
QImage SomePicture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(60, 130, 246));
    QPainter painter(&image);
    painter.fillRect(0, 0, width / 2, height / 2, QColor(232, 115, 12));
    return image;
}

QByteArray PngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QString DataUriOf(const QImage& image)
{
    return QLatin1String("data:image/png;base64,") + QString::fromLatin1(PngOf(image).toBase64());
}

// Receives what a link would open in the browser.
class OpenedLinks : public QObject
{
    Q_OBJECT

public:
    OpenedLinks() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "SlotOpen"); }
    ~OpenedLinks() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    QStringList addresses;

public slots:
    void SlotOpen(const QUrl& url) { addresses.append(url.toString()); }
};

struct Editor
{
    Editor()
    {
        widget.resize(873, 463);
        widget.show();
        view = widget.findChild<QTextEdit*>(QStringLiteral("richTextView"));
        view->setFocus();
        widget.activateWindow();
        if (!QTest::qWaitForWindowActive(&widget))
            QTest::qFail("the window never became active", __FILE__, __LINE__);
    }

    void Press(const QString& action) { widget.findChild<QAction*>(action)->trigger(); }
    void Type(const QString& text) { QTest::keyClicks(view, text); }
    void SelectAll() { QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier); }
    QString Text() const { return widget.GetText(); }

    void Paste(QMimeData* data)
    {
        QGuiApplication::clipboard()->setMimeData(data);
        QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
    }

    WbRichEditor widget;
    QTextEdit* view = nullptr;
};
} // namespace

class tst_WbRichEditor : public QObject
{
    Q_OBJECT

private slots:
    void givesTheTextAsItWasGivenUntilAnEdit_data();
    void givesTheTextAsItWasGivenUntilAnEdit();
    void emitsNothingWhileLoading();
    void emitsTheFullTextOncePerChange();
    void emitsNothingWhenTheCursorMoves();
    void emitsNothingWhenAFormatIsThereAlready();
    void givesTheLoadedTextAgainWhenEverythingIsUndone();
    void keepsItsOwnTextThroughLoadingAndEditing_data();
    void keepsItsOwnTextThroughLoadingAndEditing();
    void formatsTheSelection_data();
    void formatsTheSelection();
    void keepsHighlightedTextReadable();
    void makesHeadingsWithTheKeyboard();
    void continuesWithAParagraphBehindAHeading();
    void makesAndLeavesLists();
    void indentsListItemsWithTab();
    void insertsALinkWithACompletedAddress();
    void refusesUnsafeLinkAddresses();
    void editsAndRemovesALink();
    void opensALinkOnControlClickOnly();
    void insertsATableAndChangesItsRowsAndColumns();
    void movesThroughTableCellsWithTab();
    void insertsAPictureFromTheClipboardAsData();
    void scalesALargePictureDown();
    void takesADroppedPictureFileIn();
    void refusesAPictureThatClaimsTooManyPixels();
    void keepsOutWhatIsUnsafe_data();
    void keepsOutWhatIsUnsafe();
    void boundsHostileTables();
    void cleansPastedHtml();
    void copiesPicturesWithTheirData();
    void findsTextInBothDirections();
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

void tst_WbRichEditor::formatsTheSelection_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("expected");

    QTest::newRow("bold") << QStringLiteral("toolBold") << QStringLiteral("<p><b>字</b></p>");
    QTest::newRow("italic") << QStringLiteral("toolItalic") << QStringLiteral("<p><i>字</i></p>");
    QTest::newRow("underline") << QStringLiteral("toolUnderline") << QStringLiteral("<p><u>字</u></p>");
    QTest::newRow("strike") << QStringLiteral("toolStrike") << QStringLiteral("<p><s>字</s></p>");
    QTest::newRow("bullets") << QStringLiteral("toolBullets") << QStringLiteral("<ul><li>字</li></ul>");
    QTest::newRow("numbers") << QStringLiteral("toolNumbers") << QStringLiteral("<ol><li>字</li></ol>");
    QTest::newRow("indent") << QStringLiteral("toolIndent")
                            << QStringLiteral("<p style=\"margin-left:40px\">字</p>");
    QTest::newRow("centre") << QStringLiteral("toolAlignCentre")
                            << QStringLiteral("<p style=\"text-align:center\">字</p>");
}

void tst_WbRichEditor::formatsTheSelection()
{
    QFETCH(QString, action);
    QFETCH(QString, expected);
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>字</p>"));

    editor.SelectAll();
    if (auto* button = editor.widget.findChild<QToolButton*>(action + QStringLiteral("Button")))
        QTest::mouseClick(button, Qt::LeftButton);
    else
        editor.Press(action); // stands in a menu
    QCOMPARE(editor.Text(), expected);

    QTest::keyClick(editor.view, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<p>字</p>"));
}

void tst_WbRichEditor::keepsHighlightedTextReadable()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>字</p>"));
    auto* button = editor.widget.findChild<QToolButton*>(QStringLiteral("toolBackColour"));
    const auto choose = [button](const QString& text) {
        const auto actions = button->menu()->actions();
        for (QAction* action : actions) {
            if (action->text() == text)
                action->trigger();
        }
    };
    editor.SelectAll();

    choose(QStringLiteral("浅黄"));
    QCOMPARE(editor.Text(),
             QStringLiteral("<p><span style=\"color:#1f2329;background-color:#ffe58a\">字</span></p>"));

    choose(QStringLiteral("无背景"));
    QCOMPARE(editor.Text(), QStringLiteral("<p>字</p>"));
}

void tst_WbRichEditor::makesHeadingsWithTheKeyboard()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>标题</p>"));
    auto* combo = editor.widget.findChild<QComboBox*>(QStringLiteral("comboHeading"));

    QTest::keyClick(editor.view, Qt::Key_2, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<h2>标题</h2>"));
    QCOMPARE(combo->currentIndex(), 2);

    QTest::keyClick(editor.view, Qt::Key_0, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<p>标题</p>"));
}

void tst_WbRichEditor::continuesWithAParagraphBehindAHeading()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<h1>标题</h1>"));

    QTest::keyClick(editor.view, Qt::Key_End);
    QTest::keyClick(editor.view, Qt::Key_Return);
    editor.Type(QStringLiteral("x"));

    QCOMPARE(editor.Text(), QStringLiteral("<h1>标题</h1>\n<p>x</p>"));
}

void tst_WbRichEditor::makesAndLeavesLists()
{
    Editor editor;

    editor.Press(QStringLiteral("toolNumbers"));
    editor.Type(QStringLiteral("a"));
    QTest::keyClick(editor.view, Qt::Key_Return);
    editor.Type(QStringLiteral("b"));
    QTest::keyClick(editor.view, Qt::Key_Return);
    QTest::keyClick(editor.view, Qt::Key_Return); // an empty item ends the list
    editor.Type(QStringLiteral("c"));

    QCOMPARE(editor.Text(), QStringLiteral("<ol><li>a</li>\n<li>b</li></ol>\n<p>c</p>"));
}

void tst_WbRichEditor::indentsListItemsWithTab()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<ul><li>a</li>\n<li>b</li></ul>"));

    QTest::keyClick(editor.view, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(editor.view, Qt::Key_Tab);
    QCOMPARE(editor.Text(), QStringLiteral("<ul><li>a<ul><li>b</li></ul></li></ul>"));

    QTest::keyClick(editor.view, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<ul><li>a</li>\n<li>b</li></ul>"));
}

void tst_WbRichEditor::insertsALinkWithACompletedAddress()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>主页</p>"));
    editor.SelectAll();
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        QTest::keyClicks(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditLinkAddress")),
                         QStringLiteral("example.com"));
        ModalDriver::Press(dialog, QStringLiteral("确定"));
    });

    editor.Press(QStringLiteral("toolLink"));
    editor.Type(QStringLiteral("x"));

    QCOMPARE(editor.Text(), QStringLiteral("<p><a href=\"https://example.com\">主页</a>x</p>"));
}

void tst_WbRichEditor::refusesUnsafeLinkAddresses()
{
    Editor editor;
    ModalDriver modals;
    bool enabled = true;
    QString hint;
    modals.Then([&enabled, &hint](QWidget* dialog) {
        QTest::keyClicks(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditLinkAddress")),
                         QStringLiteral("javascript:alert(1)"));
        enabled = dialog->findChild<QWidget*>(QStringLiteral("pushButtonLinkOk"))->isEnabled();
        hint = dialog->findChild<QLabel*>(QStringLiteral("labelLinkHint"))->text();
        ModalDriver::Reject(dialog);
    });

    editor.Press(QStringLiteral("toolLink"));

    QVERIFY(!enabled);
    QVERIFY(hint.contains(QStringLiteral("http://")));
    QCOMPARE(editor.Text(), QString());
}

void tst_WbRichEditor::editsAndRemovesALink()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>a<a href=\"https://one.example\">链接</a></p>"));
    QTest::keyClick(editor.view, Qt::Key_End);
    QTest::keyClick(editor.view, Qt::Key_Left);
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        auto* address = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditLinkAddress"));
        address->selectAll();
        QTest::keyClicks(address, QStringLiteral("https://two.example"));
        ModalDriver::Press(dialog, QStringLiteral("确定"));
    });
    modals.Then([](QWidget* dialog) { ModalDriver::Press(dialog, QStringLiteral("取消链接")); });

    editor.Press(QStringLiteral("toolLink"));
    QCOMPARE(editor.Text(), QStringLiteral("<p>a<a href=\"https://two.example\">链接</a></p>"));

    QTest::keyClick(editor.view, Qt::Key_Left);
    editor.Press(QStringLiteral("toolLink"));
    QCOMPARE(editor.Text(), QStringLiteral("<p>a链接</p>"));
}

void tst_WbRichEditor::opensALinkOnControlClickOnly()
{
    Editor editor;
    OpenedLinks opened;
    editor.widget.Init(QStringLiteral("<p><a href=\"https://example.com/\">一个很长的链接</a></p>"));
    QVERIFY(QTest::qWaitForWindowExposed(&editor.widget));
    QTextCursor cursor(editor.view->document());
    cursor.setPosition(2);
    const QPoint place = editor.view->cursorRect(cursor).center();

    QTest::mouseClick(editor.view->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(opened.addresses, QStringList());

    QTest::mouseClick(editor.view->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
    QCOMPARE(opened.addresses, QStringList{QStringLiteral("https://example.com/")});
}

void tst_WbRichEditor::insertsATableAndChangesItsRowsAndColumns()
{
    Editor editor;
    auto* picker = editor.widget.findChild<QWidget*>(QStringLiteral("tableSizePicker"));
    QVERIFY(picker);
    QTest::keyClick(picker, Qt::Key_Left);
    QTest::keyClick(picker, Qt::Key_Return);
    QTextTable* table = editor.view->textCursor().currentTable();
    QVERIFY(table);
    QCOMPARE(table->rows(), 3);
    QCOMPARE(table->columns(), 2);

    editor.Press(QStringLiteral("tableRowBelow"));
    editor.Press(QStringLiteral("tableColumnRight"));
    QCOMPARE(table->rows(), 4);
    QCOMPARE(table->columns(), 3);

    editor.Press(QStringLiteral("tableRemoveRow"));
    editor.Press(QStringLiteral("tableRemoveColumn"));
    QCOMPARE(editor.Text().count(QLatin1String("<tr>")), 3);
    QCOMPARE(editor.Text().count(QLatin1String("<td>")), 6);

    editor.view->setTextCursor(table->cellAt(0, 0).firstCursorPosition());
    editor.Press(QStringLiteral("tableRemove"));
    QVERIFY(!editor.Text().contains(QLatin1String("<table")));
}

void tst_WbRichEditor::movesThroughTableCellsWithTab()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<table><tr><td>a</td><td>b</td></tr></table>"));
    QTextCursor cursor(editor.view->document());
    cursor.movePosition(QTextCursor::Down);
    editor.view->setTextCursor(cursor);
    QTextTable* table = editor.view->textCursor().currentTable();
    QVERIFY(table);

    QTest::keyClick(editor.view, Qt::Key_Tab);
    QCOMPARE(table->cellAt(editor.view->textCursor()).column(), 1);

    QTest::keyClick(editor.view, Qt::Key_Tab); // behind the last cell: a new row
    QCOMPARE(table->rows(), 2);
}

void tst_WbRichEditor::insertsAPictureFromTheClipboardAsData()
{
    Editor editor;
    auto* data = new QMimeData;
    data->setImageData(SomePicture(40, 20));

    editor.Paste(data);

    QVERIFY(editor.Text().startsWith(QLatin1String("<p><img src=\"data:image/png;base64,")));
    QVERIFY(editor.Text().endsWith(QLatin1String("\" width=\"40\" height=\"20\"></p>")));
}

void tst_WbRichEditor::scalesALargePictureDown()
{
    Editor editor;
    auto* data = new QMimeData;
    data->setImageData(SomePicture(5000, 2500));

    editor.Paste(data);

    const QString text = editor.Text();
    const int comma = text.indexOf(QLatin1Char(','));
    const int end = text.indexOf(QLatin1Char('"'), comma);
    const QImage kept =
        QImage::fromData(QByteArray::fromBase64(text.mid(comma + 1, end - comma - 1).toLatin1()));
    QCOMPARE(kept.size(), QSize(1600, 800));
    QVERIFY(text.contains(QLatin1String("width=\"640\" height=\"320\"")));
}

void tst_WbRichEditor::takesADroppedPictureFileIn()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("图.png"));
    QVERIFY(SomePicture(40, 20).save(path));
    Editor editor;
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(path)});

    editor.Paste(data);

    QVERIFY(editor.Text().contains(QLatin1String("<img src=\"data:image/png;base64,")));
    QVERIFY(!editor.Text().contains(QLatin1String("file:")));
}

void tst_WbRichEditor::refusesAPictureThatClaimsTooManyPixels()
{
    QByteArray bitmap;
    QBuffer buffer(&bitmap);
    buffer.open(QIODevice::WriteOnly);
    SomePicture(2, 2).save(&buffer, "BMP");
    const auto pretend = [&bitmap](qint32 side) {
        const qint32 length = qToLittleEndian(side);
        bitmap.replace(18, 4, reinterpret_cast<const char*>(&length), 4); // width
        bitmap.replace(22, 4, reinterpret_cast<const char*>(&length), 4); // height
        return QStringLiteral("<p>x<img src=\"data:image/bmp;base64,%1\">y</p>")
            .arg(QString::fromLatin1(bitmap.toBase64()));
    };
    Editor editor;

    editor.widget.Init(pretend(2));
    QVERIFY(editor.view->toPlainText().contains(QChar(QChar::ObjectReplacementCharacter)));

    editor.widget.Init(pretend(40000));
    QCOMPARE(editor.view->toPlainText(), QStringLiteral("xy"));
}

void tst_WbRichEditor::keepsOutWhatIsUnsafe_data()
{
    QTest::addColumn<QString>("html");

    QTest::newRow("script") << QStringLiteral("<p>ok</p><script>alert(1)</script>");
    QTest::newRow("javascript link") << QStringLiteral("<a href=\"javascript:alert(1)\">ok</a>");
    QTest::newRow("javascript link in disguise")
        << QStringLiteral("<a href=\" jav&#x09;ascript:alert(1)\">ok</a>");
    QTest::newRow("file link") << QStringLiteral("<a href=\"file:///etc/passwd\">ok</a>");
    QTest::newRow("data link") << QStringLiteral("<a href=\"data:text/html,<b>x</b>\">ok</a>");
    QTest::newRow("file picture") << QStringLiteral(
        "<p>ok<img src=\"file:///usr/share/pixmaps/debian-logo.png\"></p>");
    QTest::newRow("web picture") << QStringLiteral("<p>ok<img src='http://127.0.0.1:1/x.png'></p>");
    QTest::newRow("picture that is html")
        << QStringLiteral("<p>ok<img src=\"data:text/html;base64,PGI+\"></p>");
    QTest::newRow("svg picture") << QStringLiteral(
        "<p>ok<img src=\"data:image/svg+xml;base64,PHN2Zy8+\"></p>");
    QTest::newRow("style sheet") << QStringLiteral(
        "<link rel=stylesheet href=\"file:///etc/x.css\"><p>ok</p>");
    QTest::newRow("handler") << QStringLiteral("<p onclick=\"alert(1)\">ok</p>");
    QTest::newRow("frame") << QStringLiteral("<p><iframe src=\"https://example.com\">x</iframe>ok</p>");
}

void tst_WbRichEditor::keepsOutWhatIsUnsafe()
{
    QFETCH(QString, html);
    Editor editor;
    editor.widget.Init(html);

    QTest::keyClick(editor.view, Qt::Key_End, Qt::ControlModifier);
    editor.Type(QStringLiteral("!"));

    QCOMPARE(editor.Text(), QStringLiteral("<p>ok!</p>"));
}

void tst_WbRichEditor::boundsHostileTables()
{
    Editor editor;
    const QString wide =
        QStringLiteral("<table><tr><td colspan=\"99999999\" rowspan=99999999>a</td></tr></table>");
    const QString deep = QStringLiteral("<table><tr><td>").repeated(20000) + QStringLiteral("x");

    // Not held to their word, they would take all memory.
    editor.widget.Init(wide);
    editor.widget.Init(deep);

    QVERIFY(editor.view->toPlainText().contains(QLatin1Char('x')));
}

void tst_WbRichEditor::cleansPastedHtml()
{
    Editor editor;
    auto* data = new QMimeData;
    data->setText(QStringLiteral("x"));
    data->setHtml(QStringLiteral(
        "<html><head><style>p.a{font-size:90pt}</style></head><body><!--StartFragment-->"
        "<p class=a style='font-family:Wingdings;color:black;background:white'>a<b>b</b></p>"
        "<p style='color:#cc0000'>c<img src='http://127.0.0.1:1/t.gif'><a href='javascript:x()'>d</a></p>"
        "<!--EndFragment--></body></html>"));

    editor.Paste(data);

    QCOMPARE(editor.Text(),
             QStringLiteral("<p>a<b>b</b></p>\n<p><span style=\"color:#cc0000\">c</span>d</p>"));
}

void tst_WbRichEditor::copiesPicturesWithTheirData()
{
    Editor editor;
    const QString html = QStringLiteral("<p>x<img src=\"%1\" width=\"20\" height=\"10\"></p>")
                             .arg(DataUriOf(SomePicture(40, 20)));
    editor.widget.Init(html);

    editor.SelectAll();
    QTest::keyClick(editor.view, Qt::Key_C, Qt::ControlModifier);
    Editor second;
    QTest::keyClick(second.view, Qt::Key_V, Qt::ControlModifier);

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
