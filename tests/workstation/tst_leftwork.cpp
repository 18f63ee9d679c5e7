// SPDX-License-Identifier: Apache-2.0

#include "DraftFixture.h"
#include "LeftWork.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <QtTest>

// What an editor left behind is told by the workstation.
class LeftWorkTest : public DraftFixture
{
    Q_OBJECT

private slots:
    void namesTheSaveThatFailedAfterItsEditorWasLeft();
    void saysNothingOfAFailureThatTheEditorShows();
    void saysWhichReleaseHasNoOutcomeYet();
    void saysNothingWhenNothingIsUnderWay();

private:
    // What the page's editors leave.
    std::unique_ptr<LeftWork> Watch();
};

std::unique_ptr<LeftWork> LeftWorkTest::Watch()
{
    auto left = std::make_unique<LeftWork>([this](const QString& appId) { return drafts->Keeps(appId); });
    connect(page, &EditorPage::SigLeft, left.get(), &LeftWork::Leave);
    return left;
}

void LeftWorkTest::namesTheSaveThatFailedAfterItsEditorWasLeft()
{
    const auto leftWork = Watch();
    Open(AppX());
    Type(QStringLiteral("new "));
    Press("pushButtonSave");
    QVERIFY(page->Leave());
    drafts->Open(AppY());
    page->Open(AppY());
    ToastWatcher toasts;

    gate.release(1);

    QTRY_COMPARE(toasts.GetCount(), 1);
    QCOMPARE(toasts.GetTexts().first(),
             QStringLiteral("应用“应用一”的版本“甲”没有保存成功：磁盘已满。"
                            "未保存的内容在本机的草稿中，重新打开该应用时可以恢复"));
    QVERIFY(drafts->Keeps(QStringLiteral("x")));
    QVERIFY(!drafts->Keeps(QStringLiteral("y")));
}

void LeftWorkTest::saysNothingOfAFailureThatTheEditorShows()
{
    const auto leftWork = Watch();
    Open(AppX());
    Type(QStringLiteral("new "));
    ToastWatcher toasts;
    gate.release(1);

    Press("pushButtonSave");

    QTRY_COMPARE(toasts.GetTexts(), QStringList(QStringLiteral("磁盘已满。")));
}

void LeftWorkTest::saysWhichReleaseHasNoOutcomeYet()
{
    const auto leftWork = Watch();
    Open(AppX());
    ModalDriver modals;
    modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("是"))); });
    Press("pushButtonBeta");
    ToastWatcher toasts;

    QVERIFY(page->Leave());

    QTRY_COMPARE(toasts.GetTexts(),
                 QStringList(QStringLiteral(
                     "离开应用“应用一”时还没有结果：灰度版本“甲”。重新打开该应用可以看到结果")));
}

void LeftWorkTest::saysNothingWhenNothingIsUnderWay()
{
    const auto leftWork = Watch();
    Open(AppX());
    ToastWatcher toasts;

    QVERIFY(page->Leave());
    Open(AppY());

    QCOMPARE(toasts.GetCount(), 0);
}

RPA_TEST_MAIN(LeftWorkTest)
#include "tst_leftwork.moc"
