// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaContentReference.h>

#include <QtTest>

namespace
{
QByteArray Content(const QString& manual)
{
    RpaAppData app;
    app.InitDefault();
    app.GetAppExtendInfo()->manual = manual;
    return app.ToJson();
}
} // namespace

class ContentOriginTest : public QObject
{
    Q_OBJECT

private slots:
    void takesTheOriginOfWhoeverDeliversIt();
    void hasNoOriginByItself();
    void keepsTwoDeliveriesUnderWayApart_data();
    void keepsTwoDeliveriesUnderWayApart();
    void takesNoOriginWithOtherContent();
    void marksUnsavedContentOnceItIsDelivered();
    void startsWithRestoredWorkOnce();
    void readsWhatAReferenceRefersTo();
    void followsNoReferenceThatItDidNotMake();
    void startsAnewWhenRestoredWorkCannotBeRead();
    void leavesRestoredWorkAloneWhileContentIsLoaded();
    void tellsOfEveryAppData();
};

void ContentOriginTest::takesTheOriginOfWhoeverDeliversIt()
{
    RpaAppData app;
    const RpaContentDelivery delivery(Content(QStringLiteral("x")),
                                      {QStringLiteral("version-1"), 3, QStringLiteral("a.draft")});

    QVERIFY(app.Parse(delivery.GetContent()));

    QCOMPARE(app.GetOrigin().versionId, QStringLiteral("version-1"));
    QCOMPARE(app.GetOrigin().baseRevision, 3);
    QCOMPARE(app.GetOrigin().draftName, QStringLiteral("a.draft"));
    QVERIFY(!app.GetModified());
}

void ContentOriginTest::hasNoOriginByItself()
{
    RpaAppData app;

    QVERIFY(app.Parse(Content(QStringLiteral("x"))));

    QVERIFY(app.GetOrigin().versionId.isEmpty());
    QCOMPARE(app.GetOrigin().baseRevision, 0);
}

void ContentOriginTest::keepsTwoDeliveriesUnderWayApart_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    const QByteArray same = Content(QStringLiteral("x"));
    QTest::newRow("of different content") << same << Content(QStringLiteral("y"));
    QTest::newRow("of the same bytes") << same << same;
}

void ContentOriginTest::keepsTwoDeliveriesUnderWayApart()
{
    // given a version that is delivered while restored work of another one is
    QFETCH(const QByteArray, first);
    QFETCH(const QByteArray, second);
    RpaAppData restored;
    RpaAppData loaded;
    {
        const RpaContentDelivery outer(first, {QStringLiteral("version-1"), 3, QStringLiteral("a.draft")},
                                       true);
        const RpaContentDelivery inner(second, {QStringLiteral("version-2"), 7, QString()});

        // when observers read them in any order
        QVERIFY(loaded.Parse(inner.GetContent()));
        QVERIFY(restored.Parse(outer.GetContent()));
    }

    QCOMPARE(restored.GetOrigin().versionId, QStringLiteral("version-1"));
    QCOMPARE(restored.GetOrigin().baseRevision, 3);
    QCOMPARE(restored.GetOrigin().draftName, QStringLiteral("a.draft"));
    QVERIFY(restored.GetModified());
    QCOMPARE(loaded.GetOrigin().versionId, QStringLiteral("version-2"));
    QCOMPARE(loaded.GetOrigin().baseRevision, 7);
    QVERIFY(!loaded.GetModified());
}

// Such as a template that is tried while an observer of the delivery asks the author something.
void ContentOriginTest::takesNoOriginWithOtherContent()
{
    RpaAppData app;
    {
        const RpaContentDelivery delivery(Content(QStringLiteral("x")),
                                          {QStringLiteral("version-1"), 3, QString()}, true);
        QVERIFY(app.Parse(Content(QStringLiteral("x"))));
    }

    QVERIFY(app.GetOrigin().versionId.isEmpty());
    QVERIFY(!app.GetModified());
}

void ContentOriginTest::marksUnsavedContentOnceItIsDelivered()
{
    // given an observer that clears the mark of what it parsed, as editors do, and one that is gone by then
    RpaAppData app;
    QSignalSpy edited(&app, &RpaAppData::SigEdited);
    {
        const RpaContentDelivery delivery(Content(QStringLiteral("x")),
                                          {QStringLiteral("version-1"), 3, QString()}, true);
        QVERIFY(app.Parse(delivery.GetContent()));
        app.SetModified(false);
        RpaAppData gone;
        QVERIFY(gone.Parse(delivery.GetContent()));
    }

    QVERIFY(app.GetModified());
    QCOMPARE(edited.size(), 1);
}

void ContentOriginTest::startsWithRestoredWorkOnce()
{
    RpaStartContent::Set(Content(QStringLiteral("restored")), {QString(), 0, QStringLiteral("a.draft")});
    RpaAppData app;
    RpaAppData next;

    app.InitDefault();
    next.InitDefault();

    QCOMPARE(app.GetAppExtendInfo()->GetManual(), QStringLiteral("restored"));
    QVERIFY(app.GetModified());
    QCOMPARE(app.GetOrigin().draftName, QStringLiteral("a.draft"));
    QVERIFY(next.GetAppExtendInfo()->GetManual().isEmpty());
    QVERIFY(!next.GetModified());
    QVERIFY(!RpaStartContent::IsSet());
}

void ContentOriginTest::startsAnewWhenRestoredWorkCannotBeRead()
{
    RpaStartContent::Set("[]", {});
    RpaAppData app;
    RpaAppData fresh;

    app.InitDefault();
    fresh.InitDefault();

    QCOMPARE(app.ToJson().size(), fresh.ToJson().size());
    QVERIFY(!app.GetModified());
}

void ContentOriginTest::leavesRestoredWorkAloneWhileContentIsLoaded()
{
    const QByteArray loaded = Content(QStringLiteral("loaded"));
    RpaStartContent::Set(Content(QStringLiteral("restored")), {});
    RpaAppData app;
    {
        const RpaContentDelivery delivery(loaded, {QStringLiteral("version-1"), 3, QString()});
        app.InitDefault();
        QVERIFY(app.Parse(delivery.GetContent()));
    }

    QCOMPARE(app.GetAppExtendInfo()->GetManual(), QStringLiteral("loaded"));
    QVERIFY(RpaStartContent::IsSet());
    RpaStartContent::Clear();
    QVERIFY(!RpaStartContent::IsSet());
}

void ContentOriginTest::tellsOfEveryAppData()
{
    const RpaAppDataNotify* notify = RpaAppDataNotify::Instance();
    QSignalSpy replaced(notify, &RpaAppDataNotify::SigReplaced);
    QSignalSpy edited(notify, &RpaAppDataNotify::SigEdited);
    QSignalSpy saving(notify, &RpaAppDataNotify::SigSaving);
    QSignalSpy givenUp(notify, &RpaAppDataNotify::SigGivenUp);
    QSignalSpy going(notify, &RpaAppDataNotify::SigGoing);
    {
        RpaAppData app;
        app.InitDefault();
        app.SetModified(true);
        app.SetModified(true);
        app.SetModified(false);
        app.SetModified(false);
        app.CheckPackageInfo();
        app.SetModified(false); // a save of nothing new
        app.SetModified(true);
        app.CheckPackageInfo();
        app.SetModified(false);
    }

    QCOMPARE(replaced.size(), 1);
    QCOMPARE(edited.size(), 3);
    QCOMPARE(givenUp.size(), 1);
    QCOMPARE(saving.size(), 1);
    QCOMPARE(going.size(), 1);
}

void ContentOriginTest::readsWhatAReferenceRefersTo()
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->manual = QStringLiteral("stored");
    QByteArrayList asked;
    RpaContentReference::SetFetch([&](const QByteArray& key) {
        asked.append(key);
        return content.ToJson();
    });
    const QByteArray reference = RpaContentReference::Make("key-1");

    RpaAppData app;
    QVERIFY(app.Parse(reference));

    QCOMPARE(asked, QByteArrayList{"key-1"});
    QCOMPARE(app.ToJson(), content.ToJson());
    RpaContentReference::SetFetch({});
    RpaAppData other;
    QVERIFY(!other.Parse(reference));
}

// Such as one from the server, which would otherwise choose what is read here.
void ContentOriginTest::followsNoReferenceThatItDidNotMake()
{
    int fetches = 0;
    RpaContentReference::SetFetch([&](const QByteArray&) {
        ++fetches;
        return QByteArray("{}");
    });
    RpaAppData app;

    QVERIFY(app.Parse("{\"contentReference\":\"00000000000000000000000000000000-key-1\"}"));

    RpaContentReference::SetFetch({});
    QCOMPARE(fetches, 0);
}

QTEST_GUILESS_MAIN(ContentOriginTest)
#include "tst_contentorigin.moc"
