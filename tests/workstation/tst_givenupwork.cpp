// SPDX-License-Identifier: Apache-2.0

#include "DraftFixture.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/PackagedMsgBox.h>

#include <QComboBox>
#include <QListWidget>
#include <QtTest>

// A draft goes when its author does not want the work saved, and for nothing else that happens in an editor.
class GivenUpWorkTest : public DraftFixture
{
    Q_OBJECT

private slots:
    void forgetsWorkThatIsNotSavedOnLeaving();
    void forgetsWorkThatIsNotSavedBeforeASwitch();
    void keepsWorkWhenTheAuthorStays();
    void keepsWorkWhenAnotherQuestionIsAnswered();
    void keepsWorkOnAReleasedVersionThatIsLeftUnasked();
    void keepsWorkThatWasToBeSavedDuringAnotherSave();
    void keepsWorkWhoseSaveFailed();

private:
    // Something is typed into the version that is shown, and its draft is on the disk.
    void Work();
    bool Keeps() { return drafts->Keeps(QStringLiteral("x")); }
    // By its row in the drop-down.
    void Pick(int row);
    static ModalDriver::Step Answer(const QString& button)
    {
        return [button](QWidget* box) { QVERIFY(ModalDriver::Press(box, button)); };
    }

    const QString no = QStringLiteral("否");
};

void GivenUpWorkTest::Work()
{
    Type(QStringLiteral("new "));
    QTRY_VERIFY(Keeps());
}

void GivenUpWorkTest::Pick(int row)
{
    auto* combo = page->findChild<QComboBox*>(QStringLiteral("version_combo"));
    auto* list = qobject_cast<QListWidget*>(combo->view());
    combo->showPopup();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

void GivenUpWorkTest::forgetsWorkThatIsNotSavedOnLeaving()
{
    Open(AppX());
    Work();
    ModalDriver modals;
    modals.Then(Answer(no));

    QVERIFY(page->Leave());

    QVERIFY(!Keeps());
}

void GivenUpWorkTest::forgetsWorkThatIsNotSavedBeforeASwitch()
{
    Open(AppX());
    Work();
    ModalDriver modals;
    modals.Then(Answer(no));

    Pick(1);

    QTRY_COMPARE(Text(), QStringLiteral("x2"));
    QVERIFY(!Keeps());
}

void GivenUpWorkTest::keepsWorkWhenTheAuthorStays()
{
    Open(AppX());
    Work();
    ModalDriver modals;
    modals.Then(Answer(QStringLiteral("取消")));
    modals.Then(Answer(QStringLiteral("取消")));

    QVERIFY(!page->Leave());
    Pick(1);

    QVERIFY(Keeps());
    QVERIFY(Text().contains(QStringLiteral("new")));
}

// With the same buttons as the editor's own, and over the editor.
void GivenUpWorkTest::keepsWorkWhenAnotherQuestionIsAnswered()
{
    Open(AppX());
    Work();
    QWidget* const editor = page->findChild<QWidget*>(QStringLiteral("RpaAppEditorWidget"));
    QVERIFY(editor);
    ModalDriver modals;
    modals.Then(Answer(no));

    PackagedMsgBox::question(QStringLiteral("要看看有什么新功能吗？"), editor,
                             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);

    QVERIFY(Keeps());
}

void GivenUpWorkTest::keepsWorkOnAReleasedVersionThatIsLeftUnasked()
{
    Open(AppX());
    Pick(2);
    QTRY_COMPARE(Text(), QStringLiteral("x3"));
    Work();

    Pick(0);

    QTRY_COMPARE(Text(), QStringLiteral("x1"));
    QVERIFY(Keeps());
}

void GivenUpWorkTest::keepsWorkThatWasToBeSavedDuringAnotherSave()
{
    // given a save under way and later work
    Open(AppX());
    Work();
    Press("pushButtonSave");
    Type(QStringLiteral("newer "));

    // when that is to be saved before a switch, which the editor takes for done
    ModalDriver modals;
    modals.Then(Answer(QStringLiteral("是")));
    Pick(1);
    gate.release(1);
    QTRY_COMPARE(Text(), QStringLiteral("x2"));

    QVERIFY(Keeps());
}

// The mark went when it was sent, so nobody is asked.
void GivenUpWorkTest::keepsWorkWhoseSaveFailed()
{
    Open(AppX());
    Work();
    ToastWatcher toasts;
    gate.release(1);
    Press("pushButtonSave");
    QTRY_COMPARE(toasts.GetCount(), 1);

    Pick(1);

    QTRY_COMPARE(Text(), QStringLiteral("x2"));
    QVERIFY(Keeps());
}

RPA_TEST_MAIN(GivenUpWorkTest)
#include "tst_givenupwork.moc"
