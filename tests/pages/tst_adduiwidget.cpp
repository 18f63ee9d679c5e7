// SPDX-License-Identifier: Apache-2.0

#include "AddUIWidget.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QAbstractButton>
#include <QBoxLayout>
#include <QtTest>

#include <memory>

namespace
{

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class TestAddUIWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void refusesANameOfBlanks();
    void handsANameBackWithoutSurroundingBlanks();
    void refusesAnExistingNameButKeepsItsOwn_data();
    void refusesAnExistingNameButKeepsItsOwn();
    void takesNoTwentyFirstCharacter();
    void refusesALineBreakInsideTheName();
    void showsItsTexts();
    void changesItsTitleWithItsMode();
    void coversNeitherNameNorButtonsWithARefusal();
    void cancels();
    void isConfirmedByReturn();
    void isClosedByItsTitleBar();
    void keepsItsMeasuresAtEveryScale();
    void runsModally();

private:
    WbLineEdit* Edit() const { return dialog->findChild<WbLineEdit*>(QStringLiteral("lineEdit")); }
    void PressOK() const
    {
        QTest::mouseClick(dialog->findChild<WbPushButton*>(QStringLiteral("pushButtonOK")), Qt::LeftButton);
    }

    std::unique_ptr<RpaUIDataManager> pages;
    std::unique_ptr<AddUIWidget> dialog;
    std::unique_ptr<ToastWatcher> toasts;
};

void TestAddUIWidget::init()
{
    toasts = std::make_unique<ToastWatcher>();
    pages = std::make_unique<RpaUIDataManager>();
    pages->AddUIData(Text("首页"), {});
    pages->AddUIData(Text("明细"), {});
    dialog = std::make_unique<AddUIWidget>(nullptr);
    dialog->SetUIDataManager(pages.get());
    dialog->show();
}

void TestAddUIWidget::cleanup()
{
    dialog.reset();
    pages.reset();
    toasts.reset();
    DpiTool::SetScale(1.0);
}

void TestAddUIWidget::refusesANameOfBlanks()
{
    QTest::keyClicks(Edit(), QStringLiteral("   "));

    PressOK();

    QCOMPARE(toasts->GetToasts(), (QVector<SeenToast>{{Text("界面名称不能为空"), 2}}));
    QVERIFY(dialog->isVisible());
    QCOMPARE(Edit()->text(), QStringLiteral("   "));
}

void TestAddUIWidget::handsANameBackWithoutSurroundingBlanks()
{
    QTest::keyClicks(Edit(), QStringLiteral("  orders "));

    PressOK();

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(dialog->GetName(), QStringLiteral("orders"));
    QCOMPARE(toasts->GetCount(), 0);
}

void TestAddUIWidget::refusesAnExistingNameButKeepsItsOwn_data()
{
    QTest::addColumn<bool>("rename");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("add, existing name") << false << Text("首页") << false;
    QTest::newRow("add, free name") << false << Text("新的") << true;
    QTest::newRow("rename, its own name") << true << Text("首页") << true;
    QTest::newRow("rename, name of another page") << true << Text("明细") << false;
}

void TestAddUIWidget::refusesAnExistingNameButKeepsItsOwn()
{
    QFETCH(bool, rename);
    QFETCH(QString, name);
    QFETCH(bool, accepted);

    // given
    if (rename) {
        dialog->SetIndex(0);
        dialog->SetRenameMode(true);
    }
    dialog->SetName(name);

    // when
    PressOK();

    // then
    QCOMPARE(dialog->isVisible(), !accepted);
    const QVector<SeenToast> expected =
        accepted ? QVector<SeenToast>() : QVector<SeenToast>{{Text("界面名称已存在"), 1}};
    QCOMPARE(toasts->GetToasts(), expected);
}

void TestAddUIWidget::takesNoTwentyFirstCharacter()
{
    QTest::keyClicks(Edit(), QString(21, QLatin1Char('n')));

    QCOMPARE(Edit()->text(), QString(20, QLatin1Char('n')));
}

void TestAddUIWidget::refusesALineBreakInsideTheName()
{
    // given
    dialog->SetName(QStringLiteral("a\nb"));

    // when
    PressOK();

    // then
    QCOMPARE(toasts->GetToasts(), (QVector<SeenToast>{{Text("界面名称中不能包含换行"), 2}}));
    QVERIFY(dialog->isVisible());
    dialog->SetName(QStringLiteral("\nab\n"));
    PressOK();
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->GetName(), QStringLiteral("ab"));
}

void TestAddUIWidget::showsItsTexts()
{
    const auto* ok = dialog->findChild<WbPushButton*>(QStringLiteral("pushButtonOK"));
    const auto* cancel = dialog->findChild<WbPushButton*>(QStringLiteral("pushButtonCancel"));

    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelName"))->text(), Text("界面名称："));
    QCOMPARE(ok->text(), Text("确定"));
    QCOMPARE(ok->GetButtonType(), 1);
    QCOMPARE(cancel->text(), Text("取消"));
    QCOMPARE(cancel->GetButtonType(), 3);
    QCOMPARE(dialog->GetContentWidget()->size(), QSize(400, 130));
}

void TestAddUIWidget::changesItsTitleWithItsMode()
{
    QCOMPARE(dialog->windowTitle(), Text("添加界面"));
    dialog->SetRenameMode(true);
    QCOMPARE(dialog->windowTitle(), Text("重命名界面"));
    dialog->SetRenameMode(false);
    QCOMPARE(dialog->windowTitle(), Text("添加界面"));
}

void TestAddUIWidget::coversNeitherNameNorButtonsWithARefusal()
{
    QTest::keyClicks(Edit(), QStringLiteral(" "));

    PressOK();

    const auto* toast = dialog->findChild<QWidget*>(QStringLiteral("WbToast"));
    QVERIFY(toast);
    QList<QWidget*> inUse{Edit()};
    for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>())
        inUse << button;
    QCOMPARE(inUse.size(), 4);
    for (const QWidget* widget : qAsConst(inUse)) {
        const QRect place(widget->mapTo(dialog.get(), QPoint(0, 0)), widget->size());
        QVERIFY2(!place.intersects(toast->geometry()), qPrintable(widget->objectName()));
    }
}

void TestAddUIWidget::cancels()
{
    QTest::mouseClick(dialog->findChild<WbPushButton*>(QStringLiteral("pushButtonCancel")), Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

void TestAddUIWidget::isConfirmedByReturn()
{
    dialog->SetName(Text("新的"));

    QTest::keyClick(Edit(), Qt::Key_Return);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void TestAddUIWidget::isClosedByItsTitleBar()
{
    auto* close = dialog->findChild<QAbstractButton*>(QStringLiteral("dialogClose"));
    QVERIFY(close->isVisible());

    QTest::mouseClick(close, Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

void TestAddUIWidget::keepsItsMeasuresAtEveryScale()
{
    const auto layout = [this](const char* name) {
        return dialog->findChild<QBoxLayout*>(QLatin1String(name));
    };
    const auto* title = dialog->findChild<QWidget*>(QStringLiteral("dialogTitleBar"));
    const int titleHeight = title->minimumHeight();

    for (qreal scale : {1.0, 2.0}) {
        DpiTool::SetScale(scale);
        const auto scaled = [](int length) { return DpiTool::ScaleDefault(length); };
        QCOMPARE(layout("verticalLayoutRoot")->contentsMargins(),
                 QMargins(scaled(20), scaled(20), scaled(20), scaled(30)));
        QCOMPARE(layout("verticalLayoutRoot")->spacing(), scaled(20));
        QCOMPARE(layout("horizontalLayoutTitle")->spacing(), scaled(8));
        QCOMPARE(layout("horizontalLayoutBtn")->spacing(), scaled(10));
        QCOMPARE(title->minimumHeight(), scaled(titleHeight)); // the base has its own share
    }
}

void TestAddUIWidget::runsModally()
{
    // given
    AddUIWidget modal(nullptr);
    modal.SetUIDataManager(pages.get());
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([](AddUIWidget* open) {
        open->SetName(Text("新的"));
        QVERIFY(ModalDriver::Press(open, Text("确定")));
    });

    // when, then
    QCOMPARE(modal.exec(), int(QDialog::Accepted));
    QCOMPARE(modal.GetName(), Text("新的"));
}

RPA_TEST_MAIN(TestAddUIWidget)

#include "tst_adduiwidget.moc"
