// SPDX-License-Identifier: Apache-2.0

#include "RpaAppEditorHandle.h"
#include "SaveDialogFixture.h"
#include "TestApp.h"

#include <RpaEditorLogic/RpaNotifyId.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbBaseUI/WbToast.h>

#include <QtTest>

// Versions that are deleted while the dialog is open.
class TestSaveSnapshotInfoWidgetDeleting : public SaveDialogFixture
{
    Q_OBJECT

private slots:
    void removesTheRowOfAVersionDeletedElsewhere();

    void deletesTheNamedVersion_data();
    void deletesTheNamedVersion();
    void deletesNothingThatItDoesNotOffer();
    void showsAFailedDeletion();
    void keepsTheTypedNameWhenAnotherVersionGoes();
    void keepsTheTypedDescriptionWhenAVersionGoesThatItDoesNotOffer_data();
    void keepsTheTypedDescriptionWhenAVersionGoesThatItDoesNotOffer();
};

void TestSaveSnapshotInfoWidgetDeleting::removesTheRowOfAVersionDeletedElsewhere()
{
    // given
    RpaAppEditorHandle handle;
    Open();
    user->TypeName(Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));

    // when
    handle.DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v1"));

    // then
    QTRY_COMPARE(user->Names(), QStringList{Text("版本2")});
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("删除成功"), int(ToastInformation)}}));
    QCOMPARE(user->name->currentText(), Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), QString());
}

void TestSaveSnapshotInfoWidgetDeleting::deletesTheNamedVersion_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("left");
    QTest::newRow("the first") << Text("版本1 ") << QStringLiteral("v1") << Text("版本2");
    QTest::newRow("the last") << Text(" 版本2") << QStringLiteral("v2") << Text("版本1");
}

void TestSaveSnapshotInfoWidgetDeleting::deletesTheNamedVersion()
{
    QFETCH(QString, name);
    QFETCH(QString, id);
    QFETCH(QString, left);

    // given
    Open();
    user->TypeName(name);

    // when
    QVERIFY(QMetaObject::invokeMethod(dialog.get(), "SlotDelete"));

    // then
    QTRY_COMPARE(user->Names(), QStringList{left});
    const auto request =
        service->recorder.answers.constFirst().request.objectCast<DeleteAppSnapshotInfoRequest>();
    QCOMPARE(request->GetSnapshotId(), id);
    QVERIFY(request->GetAppId().isEmpty());
    QVERIFY(request->GetIdentity().isEmpty());
    QCOMPARE(service->toasts.GetTexts(), QStringList{Text("删除成功")});
}

void TestSaveSnapshotInfoWidgetDeleting::deletesNothingThatItDoesNotOffer()
{
    Open();
    user->TypeName(Text("灰度版"));

    QVERIFY(QMetaObject::invokeMethod(dialog.get(), "SlotDelete"));

    // The next deletion is the only one that anybody hears of.
    user->TypeName(Text("版本2"));
    QVERIFY(QMetaObject::invokeMethod(dialog.get(), "SlotDelete"));
    QTRY_COMPARE(user->Names(), QStringList{Text("版本1")});
    QCOMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetTexts(), QStringList{Text("删除成功")});
}

void TestSaveSnapshotInfoWidgetDeleting::showsAFailedDeletion()
{
    Open();

    InjectAnswer(NotifyDeleteAppSnapshotInfo, QSharedPointer<DeleteAppSnapshotInfoRequest>::create(),
                 Outcome(false, Text("不能删除")));

    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("不能删除"), 2}}));
    QCOMPARE(user->name->count(), 2);
}

void TestSaveSnapshotInfoWidgetDeleting::keepsTheTypedNameWhenAnotherVersionGoes()
{
    // given
    Open();
    user->PickRow(0);
    user->TypeName(Text("草稿"));
    const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(QStringLiteral("v1"));

    // when
    InjectAnswer(NotifyDeleteAppSnapshotInfo, request, Outcome(true));

    // then
    QCOMPARE(user->Names(), QStringList{Text("版本2")});
    QCOMPARE(user->name->currentText(), Text("草稿"));
}

void TestSaveSnapshotInfoWidgetDeleting::keepsTheTypedDescriptionWhenAVersionGoesThatItDoesNotOffer_data()
{
    QTest::addColumn<bool>("isDeletion");
    QTest::newRow("a version of somewhere else") << true;
    QTest::newRow("a request of another kind") << false;
}

void TestSaveSnapshotInfoWidgetDeleting::keepsTheTypedDescriptionWhenAVersionGoesThatItDoesNotOffer()
{
    QFETCH(bool, isDeletion);

    // given
    Open();
    user->TypeName(Text("版本1"));
    QTest::keyClicks(user->desc, QStringLiteral("mine "));
    QCOMPARE(user->desc->toPlainText(), Text("mine 说明1"));
    const auto elsewhere = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    elsewhere->SetSnapshotId(QStringLiteral("elsewhere"));
    QSharedPointer<IHttpRequest> request = QSharedPointer<GetSnapshotListRequest>::create();
    if (isDeletion)
        request = elsewhere;

    // when
    InjectAnswer(NotifyDeleteAppSnapshotInfo, request, Outcome(true));

    // then
    QCOMPARE(user->desc->toPlainText(), Text("mine 说明1"));
    QCOMPARE(user->Names(), QStringList({Text("版本1"), Text("版本2")}));
}

RPA_TEST_MAIN(TestSaveSnapshotInfoWidgetDeleting)

#include "tst_savesnapshotinfowidget_deleting.moc"
