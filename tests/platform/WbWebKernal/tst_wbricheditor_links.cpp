// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "RichEditorFixture.h"
#include "TestApp.h"

#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QUrl>

using namespace RichEditorFixture;

namespace
{
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
} // namespace

class tst_WbRichEditorLinks : public QObject
{
    Q_OBJECT

private slots:
    void insertsALinkWithACompletedAddress();
    void refusesUnsafeLinkAddresses();
    void editsAndRemovesALink();
    void opensALinkOnControlClickOnly();
};

void tst_WbRichEditorLinks::insertsALinkWithACompletedAddress()
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

void tst_WbRichEditorLinks::refusesUnsafeLinkAddresses()
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

void tst_WbRichEditorLinks::editsAndRemovesALink()
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

void tst_WbRichEditorLinks::opensALinkOnControlClickOnly()
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

RPA_TEST_MAIN(tst_WbRichEditorLinks)

#include "tst_wbricheditor_links.moc"
