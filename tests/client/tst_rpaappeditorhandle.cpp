// SPDX-License-Identifier: Apache-2.0

#include "HandleFixture.h"
#include "TestApp.h"

#include <RpaEditorLogic/RpaNotifyId.h>

#include <QUuid>
#include <QtTest>

// What holds for every request of a handle.
class TestRpaAppEditorHandle : public HandleFixture
{
    Q_OBJECT

private slots:
    void givesEveryRequestAFreshIdentity();
    void ignoresOtherNotifications();

    void survivesItsEndWhileARequestIsUnderWay_data();
    void survivesItsEndWhileARequestIsUnderWay();
    void survivesItsEndInsideItsOwnSignal();
};

void TestRpaAppEditorHandle::givesEveryRequestAFreshIdentity()
{
    // when
    for (const QString& id : {QString(), QString(), QStringLiteral("v1"), QStringLiteral("v1")}) {
        const int before = service->recorder.answers.size();
        handle->SaveSnapshotAsync(id, VersionServiceFixture::MakeModifiedApp());
        QTRY_COMPARE(service->recorder.answers.size(), before + 1);
    }
    handle->GetSnapshotData(QStringLiteral("v1"));
    handle->GetSnapshotData(QStringLiteral("v1"));
    handle->GetSnapshotList(QStringLiteral("app1"));
    handle->DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v2"));
    handle->GrayOrRelease(QStringLiteral("v1"), 1);
    QTRY_COMPARE(service->recorder.answers.size(), 9);

    // then
    QSet<QString> identities;
    for (const DeliveredAnswer& answer : service->recorder.answers) {
        const QString identity = answer.request->GetIdentity();
        const bool carriesIdentity = answer.notifyId == NotifySaveAppSnapshotInfo ||
                                     answer.notifyId == NotifyUpdateAppSnapshotInfo ||
                                     answer.notifyId == NotifyGetDevSnapshotData;
        QCOMPARE(!identity.isEmpty(), carriesIdentity);
        if (carriesIdentity) {
            QCOMPARE(QUuid(identity).toString(), identity);
            identities.insert(identity);
        }
    }
    QCOMPARE(identities.size(), 6);
}

void TestRpaAppEditorHandle::ignoresOtherNotifications()
{
    // when
    for (int notifyId : {0, 10018, 10024, 10026}) {
        const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
        InjectAnswer(notifyId, request, Outcome(false, Text("错误")));
        handle->OnHttpNotify(notifyId, request, Outcome(false, Text("错误")));
    }

    // then
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::survivesItsEndWhileARequestIsUnderWay_data()
{
    QTest::addColumn<int>("act");

    QTest::newRow("new version") << 0;
    QTest::newRow("overwrite") << 1;
    QTest::newRow("list") << 2;
    QTest::newRow("data") << 3;
    QTest::newRow("delete") << 4;
    QTest::newRow("release") << 5;
}

void TestRpaAppEditorHandle::survivesItsEndWhileARequestIsUnderWay()
{
    QFETCH(int, act);

    // given
    const auto app = VersionServiceFixture::MakeModifiedApp();
    const std::function<void()> acts[] = {
        [&] { handle->SaveSnapshotAsync(QString(), app); },
        [&] { handle->SaveSnapshotAsync(QStringLiteral("v1"), app); },
        [&] { handle->GetSnapshotList(QStringLiteral("app1")); },
        [&] { handle->GetSnapshotData(QStringLiteral("v1")); },
        [&] { handle->DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v2")); },
        [&] { handle->GrayOrRelease(QStringLiteral("v1"), 1); },
    };

    // when
    acts[act]();
    handle.reset();

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::survivesItsEndInsideItsOwnSignal()
{
    // given
    connect(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, this, [this] { handle.reset(); });

    // when
    const bool saved = handle->SaveSnapshotSync(QString(), VersionServiceFixture::MakeModifiedApp());

    // then
    QVERIFY(!saved);
    QVERIFY(!handle);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("保存成功"), 0}}));
}

RPA_TEST_MAIN(TestRpaAppEditorHandle)

#include "tst_rpaappeditorhandle.moc"
