// SPDX-License-Identifier: Apache-2.0

#include "SaveDialogFixture.h"
#include "TestApp.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>

#include <QAbstractButton>
#include <QBoxLayout>
#include <QClipboard>
#include <QLineEdit>
#include <QtTest>

// The form: its texts, and the name and description that are put into it.
class TestSaveSnapshotInfoWidget : public SaveDialogFixture
{
    Q_OBJECT

private slots:
    void showsItsTexts();
    void keepsTheMeasuresOfItsForm();
    void offersTheDevelopVersionsInOrder();
    void startsWithAnEmptyNameAndItsHint();

    void keepsTheFirstFiftyCharactersOfAPaste();
    void removesWhatIsTypedIntoAFullDescription();
    void removesWhatIsTypedAtTheFrontOfAFullDescription();
    void takesTheFiftiethCharacter();
    void keepsWholeCharactersAtTheFront();
    void takesNoNameBeyondTwentyCharacters();

    void keepsWholeCharactersAtTheLimit();
    void cutsALongDescriptionOfTheServer();
    void showsMarkupInADescriptionAsText();
    void cancels();
    void showsTheDescriptionOfThePickedVersion();
    void showsItsDescriptionAgainWhenTheVersionIsPickedAgain();
    void leavesTheDescriptionAloneWhenTheDefaultRowIsPicked();
    void leavesTheDescriptionAloneWhenThePickedVersionIsGone();
    void hasTheTitleOfAFormAndACloseButton();
    void clearsTheDescriptionForANewName();
};

void TestSaveSnapshotInfoWidget::showsItsTexts()
{
    Open();

    QCOMPARE(dialog->windowTitle(), Text("另存为"));
    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelVersion"))->text(), Text("当前版本："));
    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelVersionCurrent"))->text(),
             Text("【灰度】灰度版"));
    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelName"))->text(), Text("版本名称："));
    QCOMPARE(user->labelDesc->text(), Text("版本描述："));
    QCOMPARE(user->desc->placeholderText(), Text("版本描述不超过50字符"));
    QCOMPARE(user->name->lineEdit()->placeholderText(), Text("输入新版本名称或下拉选择覆盖版本"));
    QCOMPARE(user->ok->text(), Text("确定"));
    QCOMPARE(user->cancel->text(), Text("取消"));
    QCOMPARE(user->ok->GetButtonType(), 1);
    QCOMPARE(user->cancel->GetButtonType(), 3);
    QCOMPARE(user->name->GetBusinessStyle(), 1);
}

void TestSaveSnapshotInfoWidget::keepsTheMeasuresOfItsForm()
{
    Open();

    const auto layout = [this](const char* name) {
        return dialog->findChild<QBoxLayout*>(QLatin1String(name));
    };
    QVERIFY(dialog->findChild<QWidget*>(QStringLiteral("SaveSnapshotInfoWidget")));
    QCOMPARE(dialog->GetContentWidget()->size(), QSize(528, 420));
    QCOMPARE(dialog->GetContentWidget()->windowTitle(), QStringLiteral("SaveSnapshotInfoWidget"));
    QCOMPARE(layout("verticalLayout")->spacing(), 40);
    QCOMPARE(layout("verticalLayout")->contentsMargins(), QMargins(0, 32, 0, 52));
    QCOMPARE(layout("verticalLayout_2")->spacing(), 16);
    QCOMPARE(layout("verticalLayout_2")->contentsMargins(), QMargins(72, 0, 104, 0));
    QCOMPARE(layout("horizontalLayout_3")->spacing(), 8);
    QCOMPARE(layout("horizontalLayout")->spacing(), 8);
    QCOMPARE(layout("horizontalLayout_4")->spacing(), 8);
    QCOMPARE(layout("horizontalLayout_2")->spacing(), 12);
    QCOMPARE(layout("horizontalLayout_2")->itemAt(0)->spacerItem()->sizeHint(), QSize(40, 20));
    QCOMPARE(user->name->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(user->name->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
}

void TestSaveSnapshotInfoWidget::offersTheDevelopVersionsInOrder()
{
    Open();

    QCOMPARE(user->Names(), QStringList({Text("版本1"), Text("版本2")}));
    QCOMPARE(user->name->itemData(0).toString(), QStringLiteral("v1"));
    QCOMPARE(user->name->itemData(1).toString(), QStringLiteral("v2"));
}

void TestSaveSnapshotInfoWidget::startsWithAnEmptyNameAndItsHint()
{
    Open();

    QCOMPARE(user->name->currentIndex(), -1);
    QCOMPARE(user->name->currentText(), QString());
    QCOMPARE(user->desc->toPlainText(), QString());
}

void TestSaveSnapshotInfoWidget::keepsTheFirstFiftyCharactersOfAPaste()
{
    // given
    Open();
    QString pasted;
    for (int i = 0; i < 80; ++i)
        pasted.append(QChar(u'一' + i));
    QApplication::clipboard()->setText(pasted);

    // when
    user->desc->paste();

    // then
    QCOMPARE(user->desc->toPlainText(), pasted.left(50));
    QCOMPARE(user->desc->textCursor().position(), 50);
    QVERIFY(!user->desc->textCursor().hasSelection());
}

void TestSaveSnapshotInfoWidget::removesWhatIsTypedIntoAFullDescription()
{
    // given
    Open();
    const QString full(50, QLatin1Char('a'));
    user->desc->setPlainText(full);
    QTextCursor cursor = user->desc->textCursor();
    cursor.setPosition(20);
    user->desc->setTextCursor(cursor);

    // when
    QTest::keyClicks(user->desc, QStringLiteral("xyz"));

    // then
    QCOMPARE(user->desc->toPlainText(), full);
    QCOMPARE(user->desc->textCursor().position(), 20);
    QCOMPARE(user->desc->textCursor().anchor(), 20);
}

void TestSaveSnapshotInfoWidget::removesWhatIsTypedAtTheFrontOfAFullDescription()
{
    // given
    Open();
    QString full;
    for (int i = 0; i < 50; ++i)
        full.append(QChar(u'一' + i));
    user->desc->setPlainText(full);
    QCOMPARE(user->desc->textCursor().position(), 0);

    // when
    QTest::keyClicks(user->desc, QStringLiteral("x"));

    // then
    QCOMPARE(user->desc->toPlainText(), full);
    QCOMPARE(user->desc->textCursor().position(), 0);
}

void TestSaveSnapshotInfoWidget::takesTheFiftiethCharacter()
{
    // given
    Open();
    user->desc->setPlainText(QString(49, QLatin1Char('a')));

    // when
    QTest::keyClicks(user->desc, QStringLiteral("x"));

    // then
    QCOMPARE(user->desc->toPlainText(), QLatin1Char('x') + QString(49, QLatin1Char('a')));
    QCOMPARE(user->desc->textCursor().position(), 1);
}

void TestSaveSnapshotInfoWidget::keepsWholeCharactersAtTheFront()
{
    // given
    Open();
    const QString almostFull(49, QLatin1Char('a'));
    user->desc->setPlainText(almostFull);
    QApplication::clipboard()->setText(Text("😀"));

    // when
    user->desc->paste();

    // then
    QCOMPARE(user->desc->toPlainText(), almostFull);
    QCOMPARE(user->desc->textCursor().position(), 0);
}

void TestSaveSnapshotInfoWidget::takesNoNameBeyondTwentyCharacters()
{
    Open();

    user->TypeName(QString(25, QLatin1Char('n')));

    QCOMPARE(user->name->currentText(), QString(20, QLatin1Char('n')));
}

void TestSaveSnapshotInfoWidget::keepsWholeCharactersAtTheLimit()
{
    // given
    Open();
    const QString almostFull(49, QLatin1Char('a'));
    QApplication::clipboard()->setText(almostFull + Text("😀"));

    // when
    user->desc->paste();

    // then
    QCOMPARE(user->desc->toPlainText(), almostFull);
    QCOMPARE(user->desc->textCursor().position(), 49);
}

void TestSaveSnapshotInfoWidget::cutsALongDescriptionOfTheServer()
{
    // given
    const QString longText = QString(50, QLatin1Char('a')) + QString(70, QLatin1Char('b'));
    Manager()->GetSnapshot(QStringLiteral("v2"))->SetDesc(longText);
    Open();

    // when
    user->TypeName(Text("版本2"));

    // then
    QCOMPARE(user->desc->toPlainText(), longText.left(50));
}

void TestSaveSnapshotInfoWidget::showsMarkupInADescriptionAsText()
{
    // given
    Manager()->GetSnapshot(QStringLiteral("v2"))->SetDesc(QStringLiteral("<b>x</b><img src='http://h/'>"));
    Open();

    // when
    user->PickRow(1);

    // then
    QCOMPARE(user->desc->toPlainText(), QStringLiteral("<b>x</b><img src='http://h/'>"));
}

void TestSaveSnapshotInfoWidget::cancels()
{
    Open();

    QTest::mouseClick(user->cancel, Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QVERIFY(app->GetModified());
}

void TestSaveSnapshotInfoWidget::showsTheDescriptionOfThePickedVersion()
{
    Open();

    user->PickRow(0);

    QCOMPARE(user->name->currentText(), Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));
}

void TestSaveSnapshotInfoWidget::showsItsDescriptionAgainWhenTheVersionIsPickedAgain()
{
    // given
    Open();
    user->PickRow(0);
    user->desc->setPlainText(Text("改了"));

    // when
    user->PickRow(0);

    // then
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));
}

void TestSaveSnapshotInfoWidget::leavesTheDescriptionAloneWhenTheDefaultRowIsPicked()
{
    // given
    Manager()->SetSnapshots({});
    Open();
    user->PickRow(0);
    QCOMPARE(user->name->currentText(), Text("版本1"));
    user->desc->setPlainText(Text("第一稿"));

    // when
    user->PickRow(0);

    // then
    QCOMPARE(user->desc->toPlainText(), Text("第一稿"));
}

void TestSaveSnapshotInfoWidget::leavesTheDescriptionAloneWhenThePickedVersionIsGone()
{
    // given
    Open();
    user->PickRow(0);
    user->desc->setPlainText(Text("改了"));
    Manager()->Remove(QStringLiteral("v1"));

    // when
    user->PickRow(0);

    // then
    QCOMPARE(user->desc->toPlainText(), Text("改了"));
}

void TestSaveSnapshotInfoWidget::hasTheTitleOfAFormAndACloseButton()
{
    Open();
    WbBaseDialog small(&service->window);
    small.show();

    const QWidget* titleBar = dialog->layout()->itemAt(0)->widget();
    QVERIFY(titleBar->height() > small.layout()->itemAt(0)->widget()->height());

    QTest::mouseClick(titleBar->findChild<QAbstractButton*>(), Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

void TestSaveSnapshotInfoWidget::clearsTheDescriptionForANewName()
{
    // given
    Open();
    user->TypeName(Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));

    // when
    QTest::keyClicks(user->name->lineEdit(), QStringLiteral("0"));

    // then
    QCOMPARE(user->desc->toPlainText(), QString());
}

RPA_TEST_MAIN(TestSaveSnapshotInfoWidget)

#include "tst_savesnapshotinfowidget.moc"
