// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <WbBaseUI/ElidedLabelEx.h>
#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIconButtonWidget.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbBaseUI/WbTheme.h>

#include <QAccessible>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextDocument>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace
{
QRgb MiddleOf(QWidget& widget, const QPoint& offset = {})
{
    const QImage image = widget.grab().toImage();
    return image.pixel(image.rect().center() + offset);
}
} // namespace

class TestBaseWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void elidesALongTextAndShowsItAsToolTip();
    void showsAToolTipLetterByLetter_data();
    void showsAToolTipLetterByLetter();
    void showsAShortTextWhole();
    void neverElidesTheSecondText();
    void canBeSqueezed();
    void updatesItsToolTipWhenItGrows();
    void paintsPrimaryAndDangerButtonsFilled_data();
    void paintsPrimaryAndDangerButtonsFilled();
    void appliesTheBusinessFamilyWithTheNextType();
    void pressesTheIconButton_data();
    void pressesTheIconButton();
    void ignoresAPressThatLeavesTheButton();
    void ignoresADisabledIconButton();
    void underlinesTheSelectedIconButton();
    void tellsAssistiveProgramsWhatTheIconButtonIs();
    void keepsPastedTextPlain();
    void neverReadsTextAsHtml();
    void leavesTheTextFieldWithTab();
    void showsLabelsAsPlainText();
    void findsTheMainWindow();
    void bringsAMinimizedWindowBack();
};

void TestBaseWidgets::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void TestBaseWidgets::elidesALongTextAndShowsItAsToolTip()
{
    ElidedLabelEx label;
    label.resize(80, 24);
    const QString text = QStringLiteral("一个放不下的很长很长的版本名称");

    label.SetText(text);

    QCOMPARE(label.GetText(), text);
    QCOMPARE(label.toolTip(), text);
}

void TestBaseWidgets::showsAToolTipLetterByLetter_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("quotes") << QStringLiteral("str(\"a\") & b");
    QTest::newRow("markup") << QStringLiteral("<img src=\"file:///x\"> & b");
    QTest::newRow("escaped markup") << QStringLiteral("&lt;b&gt;");
    QTest::newRow("lines") << QStringLiteral("a < b\n<i>c</i>");
}

void TestBaseWidgets::showsAToolTipLetterByLetter()
{
    QFETCH(QString, text);

    const QString tip = UIUtils::PlainToolTip(text);

    // What a tool tip makes of it.
    QTextDocument shown;
    if (Qt::mightBeRichText(tip))
        shown.setHtml(tip);
    else
        shown.setPlainText(tip);
    QCOMPARE(shown.toPlainText(), text);
}

void TestBaseWidgets::showsAShortTextWhole()
{
    ElidedLabelEx label;
    label.resize(200, 24);

    label.SetText(QStringLiteral("版本1"));

    QVERIFY(label.toolTip().isEmpty());
}

void TestBaseWidgets::neverElidesTheSecondText()
{
    ElidedLabelEx label;
    label.SetText(QStringLiteral("一个放不下的很长很长的版本名称"), QStringLiteral("2026-11-20"));

    QCOMPARE(label.GetSecondText(), QStringLiteral("2026-11-20"));
    const int second = label.fontMetrics().horizontalAdvance(label.GetSecondText());
    QVERIFY(label.minimumSizeHint().width() > second);
}

void TestBaseWidgets::canBeSqueezed()
{
    ElidedLabelEx label;
    label.SetText(QString(500, QLatin1Char('x')));

    QVERIFY(label.minimumSizeHint().width() < 80);
    QVERIFY(label.sizeHint().width() > 1000);
}

void TestBaseWidgets::updatesItsToolTipWhenItGrows()
{
    ElidedLabelEx label;
    label.resize(40, 24);
    label.SetText(QStringLiteral("一个很长的版本名称"));
    label.show();
    QVERIFY(!label.toolTip().isEmpty());

    label.resize(400, 24);

    QTRY_VERIFY(label.toolTip().isEmpty());
}

void TestBaseWidgets::paintsPrimaryAndDangerButtonsFilled_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("color");

    QTest::newRow("default") << int(Wb::DefaultButton) << int(WbColor::Surface);
    QTest::newRow("primary") << int(Wb::PrimaryButton) << int(WbColor::Accent);
    QTest::newRow("danger") << int(Wb::DangerButton) << int(WbColor::Danger);
    QTest::newRow("secondary") << int(Wb::SecondaryButton) << int(WbColor::Surface);
}

void TestBaseWidgets::paintsPrimaryAndDangerButtonsFilled()
{
    QFETCH(int, type);
    QFETCH(int, color);
    QWidget window;
    WbPushButton button(&window);
    button.setFocusPolicy(Qt::NoFocus);
    button.resize(100, 32);
    window.show();

    button.SetButtonType(type);

    QCOMPARE(QColor(MiddleOf(button)), WbTheme::Instance()->Color(static_cast<WbColor>(color)));
}

void TestBaseWidgets::appliesTheBusinessFamilyWithTheNextType()
{
    QWidget window;
    WbPushButton button(&window);
    window.show();
    const int general = button.sizeHint().height();

    button.SetBusiness(static_cast<Wb::BaseUIBusiness>(1));
    QCOMPARE(button.sizeHint().height(), general);
    button.SetButtonType(3);

    QVERIFY(button.sizeHint().height() < general);
    QCOMPARE(button.property("business").toInt(), 1);
    QCOMPARE(button.property("buttonType").toInt(), 3);
}

void TestBaseWidgets::pressesTheIconButton_data()
{
    QTest::addColumn<int>("key");

    QTest::newRow("mouse") << 0;
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void TestBaseWidgets::pressesTheIconButton()
{
    QFETCH(int, key);
    WbIconButtonWidget button;
    button.GetLabelText()->setText(QStringLiteral("界面设计"));
    button.show();
    QSignalSpy clicked(&button, &WbIconButtonWidget::SigClicked);

    if (key == 0)
        QTest::mouseClick(&button, Qt::LeftButton);
    else
        QTest::keyClick(&button, static_cast<Qt::Key>(key));

    QCOMPARE(clicked.count(), 1);
}

void TestBaseWidgets::ignoresAPressThatLeavesTheButton()
{
    WbIconButtonWidget button;
    button.resize(100, 40);
    button.show();
    QSignalSpy clicked(&button, &WbIconButtonWidget::SigClicked);

    QTest::mousePress(&button, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mouseRelease(&button, Qt::LeftButton, Qt::NoModifier, QPoint(300, 10));
    QTest::mouseClick(&button, Qt::RightButton);

    QCOMPARE(clicked.count(), 0);
}

void TestBaseWidgets::ignoresADisabledIconButton()
{
    WbIconButtonWidget button;
    button.show();
    button.setEnabled(false);
    QSignalSpy clicked(&button, &WbIconButtonWidget::SigClicked);

    QTest::mouseClick(&button, Qt::LeftButton);

    QCOMPARE(clicked.count(), 0);
}

void TestBaseWidgets::underlinesTheSelectedIconButton()
{
    QWidget window;
    WbIconButtonWidget button(&window);
    button.setFocusPolicy(Qt::NoFocus);
    button.resize(100, 48);
    window.show();
    const QPoint bottom(0, button.height() / 2 - 1);
    const QColor accent = WbTheme::Instance()->Color(WbColor::AccentText);
    QVERIFY(QColor(MiddleOf(button, bottom)) != accent);

    button.bSelected = true;
    button.UpdateStyle();

    QCOMPARE(QColor(MiddleOf(button, bottom)), accent);
}

void TestBaseWidgets::tellsAssistiveProgramsWhatTheIconButtonIs()
{
    WbIconButtonWidget button;
    button.GetLabelText()->setText(QStringLiteral("流程设计"));
    button.bSelected = true;
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&button);
    QVERIFY(face);
    QSignalSpy clicked(&button, &WbIconButtonWidget::SigClicked);

    face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());

    QCOMPARE(face->role(), QAccessible::PageTab);
    QCOMPARE(face->text(QAccessible::Name), QStringLiteral("流程设计"));
    QVERIFY(face->state().selected);
    QCOMPARE(clicked.count(), 1);
}

void TestBaseWidgets::keepsPastedTextPlain()
{
    WbTextEdit edit;
    auto* mime = new QMimeData;
    mime->setHtml(QStringLiteral("<b>粗</b>"));
    mime->setText(QStringLiteral("粗"));
    QGuiApplication::clipboard()->setMimeData(mime);

    edit.paste();

    QCOMPARE(edit.toPlainText(), QStringLiteral("粗"));
    QVERIFY(edit.fontWeight() != QFont::Bold);
}

void TestBaseWidgets::neverReadsTextAsHtml()
{
    WbTextEdit edit;
    const QString text = QStringLiteral("<h1>描述</h1><img src='http://127.0.0.1/x.png'>");

    edit.setText(text);

    QCOMPARE(edit.toPlainText(), text);
}

void TestBaseWidgets::leavesTheTextFieldWithTab()
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* edit = new WbTextEdit(&window);
    auto* next = new QLineEdit(&window);
    layout->addWidget(edit);
    layout->addWidget(next);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    edit->setFocus();

    QTest::keyClick(edit, Qt::Key_Tab);

    QTRY_VERIFY(next->hasFocus());
    QVERIFY(edit->toPlainText().isEmpty());
}

void TestBaseWidgets::showsLabelsAsPlainText()
{
    const WbLabel label(QStringLiteral("<b>名称</b>"));

    QCOMPARE(label.textFormat(), Qt::PlainText);
    QCOMPARE(label.text(), QStringLiteral("<b>名称</b>"));
}

void TestBaseWidgets::findsTheMainWindow()
{
    QVERIFY(!UIMain::Instance()->GetMainWidget(nullptr));
    auto window = std::make_unique<QWidget>();
    auto* child = new QWidget(window.get());

    UIMain::Instance()->SetMainWidget(window.get());

    QCOMPARE(UIMain::Instance()->GetMainWidget(nullptr), window.get());
    QCOMPARE(UIMain::Instance()->GetMainWidget(child), window.get());
    window.reset();
    QVERIFY(!UIMain::Instance()->GetMainWidget(nullptr));
}

void TestBaseWidgets::bringsAMinimizedWindowBack()
{
    QWidget window;
    window.showMinimized();

    UIUtils::SetForeground(&window, true);
    UIUtils::SetForeground(nullptr, true);

    QVERIFY(!window.isMinimized());
    QVERIFY(window.isVisible());
    QTRY_VERIFY(window.isActiveWindow());
}

RPA_TEST_MAIN(TestBaseWidgets)
#include "tst_basewidgets.moc"
