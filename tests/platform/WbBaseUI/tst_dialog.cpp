// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbBaseDialog.h>

#include <QCheckBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

namespace
{
QWidget* TitleBar(WbBaseDialog& dialog)
{
    return dialog.findChild<QWidget*>(QStringLiteral("dialogTitleBar"));
}
} // namespace

class TestDialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void showsItsTitle();
    void rejectsOnEscape();
    void pressesTheButtonThatHasTheFocus_data();
    void pressesTheButtonThatHasTheFocus();
    void rejectsOnItsCloseButton();
    void hasNoCloseButtonUnlessAsked();
    void opensWithTheSizeOfItsForm();
    void keepsAFixedSize();
    void opensOverItsParent();
    void staysOnTheScreen();
    void isDraggedByItsTitle();
    void scalesTheSizeOfItsForm();
    void leavesTheNameOfItsContentToTheForm();
    void scalesItsTitleBar();
    void hasAHigherTitleForForms();
};

void TestDialog::cleanup()
{
    DpiTool::SetScale(1.0);
}

void TestDialog::showsItsTitle()
{
    WbBaseDialog dialog(nullptr);

    dialog.SetTitle(QStringLiteral("另存为"));

    QCOMPARE(dialog.windowTitle(), QStringLiteral("另存为"));
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("dialogTitle"))->text(), QStringLiteral("另存为"));
}

void TestDialog::rejectsOnEscape()
{
    WbBaseDialog dialog(nullptr);
    dialog.setResult(QDialog::Accepted);
    dialog.show();

    QTest::keyClick(&dialog, Qt::Key_Escape);

    QVERIFY(dialog.isHidden());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void TestDialog::pressesTheButtonThatHasTheFocus_data()
{
    QTest::addColumn<QString>("focused");
    QTest::addColumn<QString>("pressed");

    QTest::newRow("a push button") << "other"
                                   << "other";
    QTest::newRow("a tool button") << "tool"
                                   << "tool";
    QTest::newRow("the default button") << "usual"
                                        << "usual";
    QTest::newRow("a field") << "field"
                             << "usual";
    QTest::newRow("a choice") << "choice"
                              << "usual";
}

void TestDialog::pressesTheButtonThatHasTheFocus()
{
    QFETCH(QString, focused);
    QFETCH(QString, pressed);
    WbBaseDialog dialog(nullptr);
    auto* layout = new QVBoxLayout(dialog.GetContentWidget());
    QStringList presses;
    const auto add = [&](QWidget* widget, const char* name) {
        widget->setObjectName(QLatin1String(name));
        layout->addWidget(widget);
        if (auto* button = qobject_cast<QAbstractButton*>(widget))
            connect(button, &QAbstractButton::clicked, &dialog,
                    [&presses, button] { presses.append(button->objectName()); });
    };
    auto* usual = new QPushButton;
    auto* other = new QPushButton;
    auto* tool = new QToolButton;
    tool->setFocusPolicy(Qt::TabFocus);
    add(new QLineEdit, "field");
    add(new QCheckBox, "choice");
    add(usual, "usual");
    add(other, "other");
    add(tool, "tool");
    for (QPushButton* button : {usual, other})
        button->setAutoDefault(false);
    usual->setDefault(true);
    dialog.show();
    dialog.activateWindow();
    auto* widget = dialog.findChild<QWidget*>(focused);
    widget->setFocus();
    QTRY_VERIFY(widget->hasFocus());

    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);

    QCOMPARE(presses, QStringList{pressed});
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(presses, (QStringList{pressed, pressed}));
}

void TestDialog::rejectsOnItsCloseButton()
{
    WbBaseDialog dialog(nullptr);
    dialog.show();
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    auto* close = dialog.findChild<QToolButton*>(QStringLiteral("dialogClose"));

    QTest::mouseClick(close, Qt::LeftButton);

    QCOMPARE(rejected.count(), 1);
    QVERIFY(!close->accessibleName().isEmpty());
}

void TestDialog::hasNoCloseButtonUnlessAsked()
{
    WbBaseDialog dialog(nullptr, Qt::WindowFlags());
    dialog.show();

    QVERIFY(dialog.findChild<QToolButton*>(QStringLiteral("dialogClose"))->isHidden());
}

void TestDialog::opensWithTheSizeOfItsForm()
{
    WbBaseDialog dialog(nullptr, Qt::WindowCloseButtonHint, 1, true);
    auto* layout = new QVBoxLayout(dialog.GetContentWidget());
    layout->addWidget(new QLabel(QStringLiteral("版本名称：")));

    dialog.GetContentWidget()->resize(528, 420);
    dialog.show();

    QCOMPARE(dialog.GetContentWidget()->size(), QSize(528, 420));
}

void TestDialog::keepsAFixedSize()
{
    WbBaseDialog dialog(nullptr);
    dialog.setFixedSize(400, 280);

    dialog.show();

    QCOMPARE(dialog.size(), QSize(400, 280));
}

void TestDialog::opensOverItsParent()
{
    QWidget parent;
    parent.setGeometry(40, 40, 600, 500);
    parent.show();
    WbBaseDialog dialog(&parent);
    dialog.resize(300, 200);

    dialog.show();

    const QPoint offset = dialog.frameGeometry().center() - parent.frameGeometry().center();
    QVERIFY(offset.manhattanLength() <= 4);
}

void TestDialog::staysOnTheScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget parent;
    parent.setGeometry(screen.right() - 60, screen.bottom() - 60, 100, 100);
    parent.show();
    WbBaseDialog dialog(&parent);
    dialog.resize(300, 200);

    dialog.show();

    QVERIFY(screen.contains(dialog.geometry()));
}

void TestDialog::isDraggedByItsTitle()
{
    WbBaseDialog dialog(nullptr);
    dialog.resize(300, 200);
    dialog.show();
    const QPoint before = dialog.pos();
    QWidget* title = TitleBar(dialog);
    const QPoint grip(20, 10);

    QTest::mousePress(title, Qt::LeftButton, Qt::NoModifier, grip);
    const QPoint to = title->mapToGlobal(grip) + QPoint(30, 25);
    QMouseEvent move(QEvent::MouseMove, title->mapFromGlobal(to), to, Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(title, &move);
    QTest::mouseRelease(title, Qt::LeftButton, Qt::NoModifier, grip);

    QCOMPARE(dialog.pos(), before + QPoint(30, 25));
}

void TestDialog::scalesTheSizeOfItsForm()
{
    DpiTool::SetScale(1.5);
    WbBaseDialog dialog(nullptr, Qt::WindowCloseButtonHint);
    dialog.GetContentWidget()->resize(400, 200); // what a form does

    dialog.show();

    QCOMPARE(dialog.GetContentWidget()->size(), QSize(600, 300));
    DpiTool::SetScale(1.0);
}

void TestDialog::leavesTheNameOfItsContentToTheForm()
{
    WbBaseDialog dialog(nullptr);

    QVERIFY(dialog.GetContentWidget()->objectName().isEmpty());
}

void TestDialog::scalesItsTitleBar()
{
    WbBaseDialog dialog(nullptr);
    const int before = TitleBar(dialog)->height();

    DpiTool::SetScale(2.0);

    QCOMPARE(TitleBar(dialog)->height(), 2 * before);
}

void TestDialog::hasAHigherTitleForForms()
{
    WbBaseDialog small(nullptr, Qt::WindowCloseButtonHint, 0, true);
    WbBaseDialog form(nullptr, Qt::WindowCloseButtonHint, 1, true);

    QVERIFY(TitleBar(form)->height() > TitleBar(small)->height());
}

RPA_TEST_MAIN(TestDialog)
#include "tst_dialog.moc"
