// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "base/Clock.h"
#include "rules/InvitationRules.h"
#include "rules/TakeBackRules.h"

#include <QSemaphore>
#include <QTest>

using namespace server;

// What users have is taken from them, or replaced by what they had before.
class StoreTakeBackTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void takesTheOnlineVersionOffline_data() { Databases(); }
    void takesTheOnlineVersionOffline();
    void bringsAnEarlierOnlineVersionBack_data() { Databases(); }
    void bringsAnEarlierOnlineVersionBack();
    void stopsTheGrayVersionForThoseInvited_data() { Databases(); }
    void stopsTheGrayVersionForThoseInvited();
    void keepsTakenBackWhatIsDeletedAndRestored_data() { Databases(); }
    void keepsTakenBackWhatIsDeletedAndRestored();
    void releasesAStoppedGrayVersionOnline_data() { Databases(); }
    void releasesAStoppedGrayVersionOnline();
    void doesTheSameOnce_data() { Databases(); }
    void doesTheSameOnce();
    void refusesWhoSawAnotherVersion_data() { Databases(); }
    void refusesWhoSawAnotherVersion();
    void letsOneOfTwoAtOnceDecide_data() { Databases(); }
    void letsOneOfTwoAtOnceDecide();
    void refusesAStrangeVersion_data();
    void refusesAStrangeVersion();
    void refusesWhoMayNotEdit_data();
    void refusesWhoMayNotEdit();

private:
    Outcome<QString> TakeBack(const Account& account, const TakeBackOrder& order, qint64 now = 5000)
    {
        return InWrite([&](Transaction& t) { return rules::TakeBack(t, account, app.id, order, now); });
    }
    static TakeBackOrder Online(const QString& from, const QString& to)
    {
        return {VersionState::Online, from, to, QStringLiteral("发现严重问题")};
    }
    static TakeBackOrder Gray(const QString& from, const QString& to)
    {
        return {VersionState::Gray, from, to, QStringLiteral("试用结束")};
    }
    QString OnlineNow() const
    {
        const auto shown = store->OnlineApps(author.venderId);
        return shown.empty() ? QString() : shown.front().version.id;
    }
    QString GrayNow(const Account& account) const
    {
        const auto shown = store->GrayApps(account.pin);
        return shown.empty() ? QString() : shown.front().version.id;
    }
    int Notes(const QString& act) const
    {
        int count = 0;
        for (const AuditEntry& entry : store->Audit(author.venderId, {}, 1000))
            count += entry.act == act ? 1 : 0;
        return count;
    }
};

void StoreTakeBackTest::takesTheOnlineVersionOffline()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const Version present = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);
    const Version gray = Released(QStringLiteral("丙"), ReleaseType::Gray, 3000);
    QVERIFY(store->FindVersion(former.id)); // what is remembered of it must not outlive the act

    const auto outcome = TakeBack(colleague, Online(present.id, {}));

    QCOMPARE(std::get<QString>(outcome), QString());
    QCOMPARE(OnlineNow(), QString());
    QCOMPARE(store->FindVersion(present.id)->withdrawnAt, qint64{5000});
    QCOMPARE(store->FindVersion(former.id)->withdrawnAt, qint64{5000});
    QCOMPARE(store->FindVersion(present.id)->state, VersionState::Online);
    QCOMPARE(store->FindVersion(gray.id)->withdrawnAt, qint64{0});
    const AuditEntry entry = store->Audit(author.venderId, {}, 1).front();
    QCOMPARE(entry.act, QStringLiteral("release.offline"));
    QCOMPARE(entry.pin, colleague.pin);
    QCOMPARE(entry.at, qint64{5000});
    QCOMPARE(entry.versionId, present.id);
    QCOMPARE(entry.detail, QStringLiteral("乙"));
    QCOMPARE(entry.reason, QStringLiteral("发现严重问题"));
}

void StoreTakeBackTest::bringsAnEarlierOnlineVersionBack()
{
    const Version oldest = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const Version former = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);
    const Version present = Released(QStringLiteral("丙"), ReleaseType::Online, 3000);

    QCOMPARE(std::get<QString>(TakeBack(author, Online(present.id, former.id))), former.id);

    QCOMPARE(OnlineNow(), former.id);
    QCOMPARE(store->OnlineApps(author.venderId).front().releasedAt, qint64{5000});
    const AuditEntry entry = store->Audit(author.venderId, {}, 1).front();
    QCOMPARE(entry.act, QStringLiteral("release.return"));
    QCOMPARE(entry.versionId, former.id);
    QCOMPARE(entry.detail, QStringLiteral("乙"));
    const auto releases = store->ReleasesOf(app.id);
    QCOMPARE(releases.size(), std::size_t{3});
    QCOMPARE(releases.at(0).version.id, former.id);
    QCOMPARE(releases.at(0).releasedAt, qint64{5000});
    QCOMPARE(releases.at(1).version.id, present.id);
    QCOMPARE(releases.at(1).version.withdrawnAt, qint64{5000});
    QCOMPARE(releases.at(2).version.id, oldest.id);
    // What was taken back does not come to users by a deletion.
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, former.id, 1, 6000); });
    QCOMPARE(OnlineNow(), QString());
    // And back again.
    QCOMPARE(std::get<QString>(TakeBack(author, Online({}, present.id), 7000)), present.id);
    QCOMPARE(OnlineNow(), present.id);
}

void StoreTakeBackTest::stopsTheGrayVersionForThoseInvited()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Gray, 1000);
    const Version present = Released(QStringLiteral("乙"), ReleaseType::Gray, 2000);
    const Version online = Released(QStringLiteral("丙"), ReleaseType::Online, 3000);
    const QString code = store->InvitationsOf(app.id).front().code;
    const auto redeem = [&](const Account& account) {
        return InWrite([&](Transaction& t) { return rules::RedeemInvitation(t, account, code, 4000); });
    };
    QVERIFY(std::holds_alternative<ReleasedApp>(redeem(foreigner)));

    QCOMPARE(std::get<QString>(TakeBack(author, Gray(present.id, {}))), QString());

    QCOMPARE(GrayNow(foreigner), QString());
    QCOMPARE(OnlineNow(), online.id);
    QCOMPARE(std::get<Refusal>(redeem(administrator)).code, "no-gray");
    QCOMPARE(std::get<Refusal>(redeem(foreigner)).code, "no-gray");
    QCOMPARE(store->Audit(author.venderId, {}, 1).front().act, QStringLiteral("release.stop"));
    QCOMPARE(store->Audit(author.venderId, {}, 1).front().reason, QStringLiteral("试用结束"));
    // Whoever was invited has the earlier one when that comes back.
    TakeBack(author, Gray({}, former.id), 6000);
    QCOMPARE(GrayNow(foreigner), former.id);
}

void StoreTakeBackTest::keepsTakenBackWhatIsDeletedAndRestored()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const Version deleted = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, deleted.id, 1, 3000); });
    TakeBack(author, Online(former.id, {}));

    InWrite([&](Transaction& t) { return rules::RestoreVersion(t, administrator, deleted.id, 6000); });

    QVERIFY(store->FindVersion(deleted.id));
    QCOMPARE(OnlineNow(), QString());
}

void StoreTakeBackTest::releasesAStoppedGrayVersionOnline()
{
    const Version gray = Released(QStringLiteral("甲"), ReleaseType::Gray, 1000);
    TakeBack(author, Gray(gray.id, {}));

    const auto released = InWrite([&](Transaction& t) {
        return rules::ReleaseVersion(t, author, gray.id, 1, ReleaseType::Online, 6000);
    });

    QVERIFY(std::get<ReleaseResult>(released).tookEffect);
    QCOMPARE(std::get<ReleaseResult>(released).version.withdrawnAt, qint64{0});
    QCOMPARE(OnlineNow(), gray.id);
}

void StoreTakeBackTest::doesTheSameOnce()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const Version present = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);

    QCOMPARE(std::get<QString>(TakeBack(author, Online(present.id, former.id), 3000)), former.id);
    QCOMPARE(std::get<QString>(TakeBack(colleague, Online(present.id, former.id), 4000)), former.id);
    QCOMPARE(std::get<QString>(TakeBack(author, Online(former.id, {}), 5000)), QString());
    QCOMPARE(std::get<QString>(TakeBack(author, Online(former.id, {}), 6000)), QString());

    QCOMPARE(Notes(QStringLiteral("release.return")), 1);
    QCOMPARE(Notes(QStringLiteral("release.offline")), 1);
    QCOMPARE(store->FindVersion(former.id)->withdrawnAt, qint64{5000});
}

void StoreTakeBackTest::refusesWhoSawAnotherVersion()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const Version seen = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);
    const Version newer = Released(QStringLiteral("丙"), ReleaseType::Online, 3000);

    for (const QString& to : {QString(), former.id}) {
        const auto outcome = TakeBack(author, Online(seen.id, to));
        QCOMPARE(std::get<Refusal>(outcome).code, "release-changed");
        QCOMPARE(std::get<Refusal>(outcome).status, 409);
    }

    QCOMPARE(OnlineNow(), newer.id);
    QCOMPARE(store->FindVersion(former.id)->withdrawnAt, qint64{0});
    QCOMPARE(Notes(QStringLiteral("release.offline")) + Notes(QStringLiteral("release.return")), 0);
}

void StoreTakeBackTest::letsOneOfTwoAtOnceDecide()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const Version present = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);
    QSemaphore go;
    QSemaphore ended;
    store->Submit({[&](Transaction&) { go.acquire(); }, [](const std::exception_ptr&) {}, 0});
    std::optional<Outcome<QString>> outcomes[2];
    const TakeBackOrder orders[2] = {Online(present.id, {}), Online(present.id, former.id)};
    const Account who[2] = {author, colleague};
    for (int i = 0; i < 2; ++i) {
        const auto act = [&, i](Transaction& t) {
            outcomes[i] = OutcomeOf([&] { return rules::TakeBack(t, who[i], app.id, orders[i], 5000); });
        };
        store->Submit({act, [&](const std::exception_ptr&) { ended.release(); }, 0});
    }

    go.release();
    QVERIFY(ended.tryAcquire(2, 20000));

    QVERIFY(std::holds_alternative<QString>(*outcomes[0]));
    QCOMPARE(std::get<Refusal>(*outcomes[1]).code, "release-changed");
    QCOMPARE(OnlineNow(), QString());
}

void StoreTakeBackTest::refusesAStrangeVersion_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("status");
    for (const char* database : {"sqlite", "postgresql"}) {
        const QString name = QString::fromLatin1(database);
        QTest::addRow("%s, unknown", database) << name << QStringLiteral("unknown") << 404;
        QTest::addRow("%s, of another app", database) << name << QStringLiteral("foreign") << 404;
        QTest::addRow("%s, deleted", database) << name << QStringLiteral("deleted") << 404;
        QTest::addRow("%s, gray as online", database) << name << QStringLiteral("gray") << 409;
        QTest::addRow("%s, develop", database) << name << QStringLiteral("develop") << 409;
    }
}

void StoreTakeBackTest::refusesAStrangeVersion()
{
    QFETCH(QString, what);
    QFETCH(int, status);
    QString to = QStringLiteral("no-such-version");
    if (what == QLatin1String("foreign")) {
        const App mine = app;
        app = std::get<App>(InWrite(
            [](Transaction& t) { return rules::CreateApp(t, author, QStringLiteral("另一个"), 0, 1); }));
        to = Released(QStringLiteral("甲"), ReleaseType::Online, 1000).id;
        app = mine;
    } else if (what == QLatin1String("deleted")) {
        to = Released(QStringLiteral("甲"), ReleaseType::Online, 1000).id;
        InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, to, 1, 1500); });
    } else if (what == QLatin1String("gray")) {
        to = Released(QStringLiteral("甲"), ReleaseType::Gray, 1000).id;
    } else if (what == QLatin1String("develop")) {
        to = Save(QStringLiteral("甲"), "{}").id;
    }
    const Version present = Released(QStringLiteral("乙"), ReleaseType::Online, 2000);

    const auto outcome = TakeBack(author, Online(present.id, to));

    QCOMPARE(std::get<Refusal>(outcome).status, status);
    QVERIFY(store->FindVersion(present.id)->withdrawnAt == 0);
    QCOMPARE(Notes(QStringLiteral("release.return")), 0);
}

void StoreTakeBackTest::refusesWhoMayNotEdit_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("who");
    for (const char* database : {"sqlite", "postgresql"}) {
        for (const Account& account : {foreigner, administrator})
            QTest::addRow("%s, %s", database, qPrintable(account.pin))
                << QString::fromLatin1(database) << account.pin;
    }
}

void StoreTakeBackTest::refusesWhoMayNotEdit()
{
    QFETCH(QString, who);
    const Version present = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);

    const auto outcome = TakeBack(who == foreigner.pin ? foreigner : administrator, Online(present.id, {}));

    QCOMPARE(std::get<Refusal>(outcome).status, 404);
    QCOMPARE(OnlineNow(), present.id);
}

QTEST_GUILESS_MAIN(StoreTakeBackTest)

#include "tst_store_takeback.moc"
