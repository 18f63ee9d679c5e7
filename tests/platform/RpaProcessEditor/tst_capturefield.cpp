// SPDX-License-Identifier: Apache-2.0

#include "CaptureFixture.h"
#include "EditorFixture.h"
#include "TestApp.h"

#include <RpaProcessEditor/ProcessVisualEditorWidget.h>

#include <QComboBox>
#include <QTabBar>
#include <QToolButton>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
constexpr auto page = "<button id='go' style='margin:40px'>去</button><button id='back'>回</button>";

RpaStatement Read(const QString& id)
{
    return Statement(QStringLiteral("browser.read"), id);
}

// An author with two statements that read an element, and the embedded browser with a page.
class Author
{
public:
    Author() : app(App({Read(QStringLiteral("a")), Read(QStringLiteral("b"))}))
    {
        browser.server.Put(QStringLiteral("/page"), page);
        editor.resize(1200, 600);
        editor.SetRpaAppData(app);
        editor.show();
        view = editor.findChild<QTreeView*>(QStringLiteral("statementView"));
    }

    bool Open() { return browser.Open(QStringLiteral("/page")); }

    void Select(int row) const
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(row, 1)).center());
    }

    // Presses the button of the shown statement's field.
    void AskForCapture() const
    {
        QTest::mouseClick(editor.findChild<QToolButton*>(QStringLiteral("captureButton")), Qt::LeftButton);
    }

    void SwitchTo(int process) const
    {
        editor.findChild<QTabBar*>(QStringLiteral("processTabBar"))->setCurrentIndex(process);
    }

    QString ElementOf(const char* id) const
    {
        return Main(app)->Find(QLatin1String(id))->GetArgument(QStringLiteral("element"));
    }

    int ElementCount() const { return app->GetHtmlNodeManager()->GetCount(); }
    QString LastElement() const { return app->GetHtmlNodeManager()->GetNode(ElementCount() - 1).id; }

    CaptureFixture browser;
    RpaAppDataPtr app;
    ProcessVisualEditorWidget editor;
    QTreeView* view = nullptr;
};
} // namespace

class CaptureFieldTest : public QObject
{
    Q_OBJECT

private slots:
    void aCapturedElementFillsTheFieldThatAskedForIt()
    {
        Author author;
        QVERIFY(author.Open());
        author.Select(0);

        author.AskForCapture();
        author.browser.Click(QStringLiteral("#go"));

        QTRY_COMPARE(author.ElementCount(), 1);
        QCOMPARE(author.ElementOf("a"), author.LastElement());
        QCOMPARE(author.ElementOf("b"), QString());
        const auto* field = author.editor.findChild<QWidget*>(QStringLiteral("field_element"));
        QCOMPARE(field->findChild<QComboBox*>(QStringLiteral("editor"))->currentText(),
                 QStringLiteral("去按钮"));
        QVERIFY(field->isAncestorOf(author.editor.focusWidget()));
    }

    void aStatementNamesItsElement()
    {
        Author author;
        QVERIFY(author.Open());
        author.Select(0);

        author.AskForCapture();
        author.browser.Click(QStringLiteral("#go"));
        QTRY_COMPARE(author.ElementCount(), 1);

        const QString card = author.view->model()->index(0, 1).data(Qt::AccessibleTextRole).toString();
        QVERIFY2(card.contains(QStringLiteral("读取 去按钮")), qPrintable(card));
    }

    void aCaptureThatReplacesAnotherFillsTheFieldThatAskedLast_data()
    {
        QTest::addColumn<int>("row");
        QTest::newRow("the same field asks again") << 0;
        QTest::newRow("another statement asks") << 1;
    }
    void aCaptureThatReplacesAnotherFillsTheFieldThatAskedLast()
    {
        QFETCH(int, row);
        Author author;
        QVERIFY(author.Open());
        author.Select(0);
        author.AskForCapture();

        author.Select(row);
        author.AskForCapture();
        author.browser.Click(QStringLiteral("#go"));

        QTRY_COMPARE(author.ElementCount(), 1);
        QCOMPARE(author.ElementOf(row == 0 ? "a" : "b"), author.LastElement());
        QCOMPARE(author.ElementOf(row == 0 ? "b" : "a"), QString());
    }

    void theStatementThatAskedIsFilledAlthoughTheAuthorLooksElsewhere_data()
    {
        QTest::addColumn<bool>("otherProcess");
        QTest::newRow("another statement is selected") << false;
        QTest::newRow("another process is shown") << true;
    }
    void theStatementThatAskedIsFilledAlthoughTheAuthorLooksElsewhere()
    {
        QFETCH(bool, otherProcess);
        Author author;
        QVERIFY(author.Open());
        author.Select(0);
        author.AskForCapture();

        if (otherProcess)
            author.SwitchTo(1);
        else
            author.Select(1);
        author.browser.Click(QStringLiteral("#go"));

        QTRY_COMPARE(author.ElementCount(), 1);
        QCOMPARE(author.ElementOf("a"), author.LastElement());
        QCOMPARE(author.ElementOf("b"), QString());
    }

    void aCaptureThatWasGivenUpFillsNothingLater()
    {
        Author author;
        QVERIFY(author.Open());
        author.Select(0);
        author.AskForCapture();
        QTest::keyClick(author.browser.window->windowHandle(), Qt::Key_Escape);
        QVERIFY(!CaptureFixture::Inspector()->IsCapturing());
        QCoreApplication::processEvents();

        QVERIFY(CaptureFixture::Inspector()->StartCapture());
        author.browser.Click(QStringLiteral("#back"));

        QTRY_COMPARE(author.ElementCount(), 1);
        QCOMPARE(author.ElementOf("a"), QString());
    }

    void theElementOfAStatementThatIsGoneStaysInTheStore()
    {
        Author author;
        QVERIFY(author.Open());
        author.Select(0);
        author.AskForCapture();
        QTest::mouseClick(author.editor.findChild<QToolButton*>(QStringLiteral("actionDeleteButton")),
                          Qt::LeftButton);
        QVERIFY(!Main(author.app)->Find(QStringLiteral("a")));

        author.browser.Click(QStringLiteral("#go"));

        QTRY_COMPARE(author.ElementCount(), 1);
        QCOMPARE(author.ElementOf("b"), QString());
    }
};

RPA_TEST_MAIN(CaptureFieldTest)
#include "tst_capturefield.moc"
