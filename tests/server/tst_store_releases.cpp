// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "base/Clock.h"
#include "rules/InvitationRules.h"
#include "sql/SqlConnection.h"

#include <QTest>

using namespace server;

// Gray and online versions, who sees them, and the notes of who did what.
class StoreReleasesTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void releasesOnlyForward_data() { Databases(); }
    void releasesOnlyForward();
    void showsTheOnlineVersionThatWasReleasedLast_data() { Databases(); }
    void showsTheOnlineVersionThatWasReleasedLast();
    void leavesADevelopCopyOfTheLastOne_data();
    void leavesADevelopCopyOfTheLastOne();
    void leavesNoCopyWhenThereIsMoreToWorkOn_data() { Databases(); }
    void leavesNoCopyWhenThereIsMoreToWorkOn();
    void opensGrayVersionsToWhomeverRedeemsACode_data() { Databases(); }
    void opensGrayVersionsToWhomeverRedeemsACode();
    void refusesAClosedInvitation_data();
    void refusesAClosedInvitation();
    void keepsOneOpenInvitationAcrossGrayReleases_data() { Databases(); }
    void keepsOneOpenInvitationAcrossGrayReleases();
    void notesWhoDidWhat_data() { Databases(); }
    void notesWhoDidWhat();

private:
    Outcome<ReleasedApp> Redeem(const Account& account, const QString& code, qint64 now);
};

Outcome<ReleasedApp> StoreReleasesTest::Redeem(const Account& account, const QString& code, qint64 now)
{
    return InWrite([&](Transaction& t) { return rules::RedeemInvitation(t, account, code, now); });
}

void StoreReleasesTest::releasesOnlyForward()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");
    const auto release = [&](ReleaseType type) {
        return std::get<ReleaseResult>(InWrite(
            [&](Transaction& t) { return rules::ReleaseVersion(t, author, version.id, 1, type, NowMs()); }));
    };

    QVERIFY(release(ReleaseType::Gray).tookEffect);
    QCOMPARE(release(ReleaseType::Gray).message, QStringLiteral("灰度版本不能再次灰度。"));
    QVERIFY(release(ReleaseType::Online).tookEffect);
    QCOMPARE(release(ReleaseType::Gray).message, QStringLiteral("线上版本不能灰度。"));
    QCOMPARE(release(ReleaseType::Online).message, QStringLiteral("线上版本不能再次上线。"));

    QCOMPARE(store->FindVersion(version.id)->state, VersionState::Online);
    SqlConnection connection(Dialect());
    auto rows = connection.Select(
        QStringLiteral("SELECT from_state, to_state, pin FROM release_entry ORDER BY id"), {});
    QVERIFY(rows.Next());
    QCOMPARE(rows.Number(0), qint64{1});
    QCOMPARE(rows.Number(1), qint64{2});
    QCOMPARE(rows.Text(2), author.pin);
    QVERIFY(rows.Next());
    QCOMPARE(rows.Number(0), qint64{2});
    QCOMPARE(rows.Number(1), qint64{3});
    QVERIFY(!rows.Next());
}

void StoreReleasesTest::showsTheOnlineVersionThatWasReleasedLast()
{
    const Version first = Released(QStringLiteral("发布1"), ReleaseType::Online, 1000);
    const Version second = Released(QStringLiteral("发布2"), ReleaseType::Online, 2000);

    auto shown = store->OnlineApps(QStringLiteral("v"));
    QCOMPARE(shown.size(), std::size_t{1});
    QCOMPARE(shown.front().version.id, second.id);
    QCOMPARE(shown.front().app.id, app.id);
    QCOMPARE(shown.front().releasedAt, qint64{2000});
    QVERIFY(store->OnlineApps(QStringLiteral("w")).empty());

    // The former one comes back when the newer one is deleted.
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, second.id, 1, 3000); });
    shown = store->OnlineApps(QStringLiteral("v"));
    QCOMPARE(shown.size(), std::size_t{1});
    QCOMPARE(shown.front().version.id, first.id);
}

void StoreReleasesTest::leavesADevelopCopyOfTheLastOne_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<int>("type");
    for (const char* database : {"sqlite", "postgresql"}) {
        QTest::addRow("%s, gray", database) << QString::fromLatin1(database) << int(ReleaseType::Gray);
        QTest::addRow("%s, online", database) << QString::fromLatin1(database) << int(ReleaseType::Online);
    }
}

void StoreReleasesTest::leavesADevelopCopyOfTheLastOne()
{
    QFETCH(int, type);
    // Given: "版本2" is taken by a released version, "版本3" was but is deleted
    const Version first = Save(QStringLiteral("版本1"), "{\"n\":1}");
    const Version second = Save(QStringLiteral("版本2"), "{\"n\":2}");
    const Version third = Save(QStringLiteral("版本3"), "{\"n\":3}");
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, third.id, 1, 500); });
    InWrite([&](Transaction& t) {
        return rules::ReleaseVersion(t, author, second.id, 1, ReleaseType::Online, 600);
    });
    InWrite([&](Transaction& t) {
        return rules::OverwriteVersion(t, author, first.id, 1, DraftOf({}, "{\"n\":7}"), 700);
    });

    const auto outcome = InWrite([&](Transaction& t) {
        return rules::ReleaseVersion(t, colleague, first.id, 2, static_cast<ReleaseType>(type), 1000);
    });

    QCOMPARE(std::get<ReleaseResult>(outcome).version.id, first.id);
    const auto list = store->VersionsOf(app.id);
    QCOMPARE(list->size(), std::size_t{3});
    const Version copy = list->front();
    QCOMPARE(copy.name, QStringLiteral("版本3"));
    QCOMPARE(copy.state, VersionState::Develop);
    QCOMPARE(copy.revision, qint64{1});
    QCOMPARE(copy.pin, colleague.pin);
    QCOMPARE(copy.createdAt, qint64{1000});
    QCOMPARE(copy.description, first.description);
    QCOMPARE(copy.apiVersion, first.apiVersion);
    QCOMPARE(store->ReadBody(copy.id, 1), QByteArray("{\"n\":7}"));
    // It can be worked on, and the released one stays as it is.
    const auto saved = InWrite([&](Transaction& t) {
        return rules::OverwriteVersion(t, author, copy.id, 1, DraftOf({}, "{\"n\":8}"), 1100);
    });
    QVERIFY(std::holds_alternative<Version>(saved));
    QCOMPARE(store->ReadBody(first.id, 2), QByteArray("{\"n\":7}"));
}

void StoreReleasesTest::leavesNoCopyWhenThereIsMoreToWorkOn()
{
    const Version first = Save(QStringLiteral("一"), "{}");
    const Version second = Save(QStringLiteral("二"), "{}");
    const auto release = [&](const Version& version, ReleaseType type) {
        return std::get<ReleaseResult>(InWrite(
            [&](Transaction& t) { return rules::ReleaseVersion(t, author, version.id, 1, type, 1000); }));
    };

    QVERIFY(release(first, ReleaseType::Gray).tookEffect);
    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{2});
    QVERIFY(release(second, ReleaseType::Gray).tookEffect);
    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{3});
    // Nothing to work on is lost by putting a gray version online, nor by a release that is none.
    const Version copy = store->VersionsOf(app.id)->front();
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, copy.id, 1, 2000); });
    QVERIFY(release(first, ReleaseType::Online).tookEffect);
    QVERIFY(!release(second, ReleaseType::Gray).tookEffect);
    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{2});
}

void StoreReleasesTest::opensGrayVersionsToWhomeverRedeemsACode()
{
    Released(QStringLiteral("发布1"), ReleaseType::Gray, 1000);
    const QString code = store->InvitationsOf(app.id).front().code;
    QVERIFY(store->GrayApps(foreigner.pin).empty());

    const auto typed = code.left(5).toLower() + QStringLiteral(" - ") + code.mid(5);
    const auto redeemed = Redeem(foreigner, typed, 2000);
    const auto again = Redeem(foreigner, code, 2000);

    QVERIFY(std::holds_alternative<ReleasedApp>(redeemed));
    QVERIFY(std::holds_alternative<ReleasedApp>(again));
    QVERIFY(store->HasGrayAccess(app.id, foreigner.pin));
    QVERIFY(!store->HasGrayAccess(app.id, administrator.pin));
    QCOMPARE(store->InvitationsOf(app.id).front().uses, qint64{1});
    // The next gray version reaches the same people.
    const Version next = Released(QStringLiteral("发布2"), ReleaseType::Gray, 3000);
    const auto shown = store->GrayApps(foreigner.pin);
    QCOMPARE(shown.size(), std::size_t{1});
    QCOMPARE(shown.front().version.id, next.id);
}

void StoreReleasesTest::refusesAClosedInvitation_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("how");
    for (const char* database : {"sqlite", "postgresql"}) {
        for (const char* how : {"revoked", "expired", "used up", "without a gray version", "unknown"})
            QTest::addRow("%s, %s", database, how)
                << QString::fromLatin1(database) << QString::fromLatin1(how);
    }
}

void StoreReleasesTest::refusesAClosedInvitation()
{
    QFETCH(QString, how);
    constexpr qint64 made = 1000;
    const Version gray = Released(QStringLiteral("发布1"), ReleaseType::Gray, made);
    const auto invitation = std::get<Invitation>(InWrite([&](Transaction& t) {
        return rules::CreateInvitation(t, author, app.id, {1, 1}, made);
    }));
    QString code = invitation.code;
    qint64 now = made + 1;
    if (how == QLatin1String("revoked"))
        InWrite([&](Transaction& t) { return rules::RevokeInvitation(t, author, invitation.id, now); });
    else if (how == QLatin1String("expired"))
        now = made + dayMs;
    else if (how == QLatin1String("used up"))
        QVERIFY(std::holds_alternative<ReleasedApp>(Redeem(colleague, code, now)));
    else if (how == QLatin1String("without a gray version"))
        InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, gray.id, 1, now); });
    else
        code = QStringLiteral("2222222222");

    const auto outcome = Redeem(foreigner, code, now);

    QVERIFY(std::holds_alternative<Refusal>(outcome));
    QVERIFY(!std::get<Refusal>(outcome).message.isEmpty());
    QVERIFY(!store->HasGrayAccess(app.id, foreigner.pin));
}

void StoreReleasesTest::keepsOneOpenInvitationAcrossGrayReleases()
{
    Released(QStringLiteral("发布1"), ReleaseType::Gray, 1000);
    Released(QStringLiteral("发布2"), ReleaseType::Gray, 2000);
    QCOMPARE(store->InvitationsOf(app.id).size(), std::size_t{1});

    const QString id = store->InvitationsOf(app.id).front().id;
    const auto byColleague =
        InWrite([&](Transaction& t) { return rules::RevokeInvitation(t, colleague, id, 2500); });
    QCOMPARE(std::get<Refusal>(byColleague).status, 403);
    InWrite([&](Transaction& t) { return rules::RevokeInvitation(t, author, id, 2500); });
    Released(QStringLiteral("发布3"), ReleaseType::Gray, 3000);

    const auto all = store->InvitationsOf(app.id);
    QCOMPARE(all.size(), std::size_t{2});
    QVERIFY(all.front().IsOpen(3000));
    QVERIFY(!all.back().IsOpen(3000));
}

void StoreReleasesTest::notesWhoDidWhat()
{
    const Version version = Released(QStringLiteral("发布1"), ReleaseType::Gray, 1000);
    Redeem(foreigner, store->InvitationsOf(app.id).front().code, 2000);
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, colleague, version.id, 1, 3000); });

    const auto entries = store->Audit(QStringLiteral("v"), {}, 100);
    const auto older = store->Audit(QStringLiteral("v"), entries.front().id, 1);

    QStringList acts;
    for (const AuditEntry& entry : entries)
        acts << entry.act + QLatin1Char(' ') + entry.pin + QLatin1Char(' ') + QString::number(entry.at);
    QCOMPARE(acts, QStringList({QStringLiteral("version.delete author-2 3000"),
                                QStringLiteral("invitation.redeem author-3 2000"),
                                QStringLiteral("invitation.create author-1 1000"),
                                QStringLiteral("release.gray author-1 1000")}));
    QCOMPARE(older.size(), std::size_t{1});
    QCOMPARE(older.front().id, entries.at(1).id);
    QVERIFY(store->Audit(QStringLiteral("w"), {}, 100).empty());
}

QTEST_GUILESS_MAIN(StoreReleasesTest)

#include "tst_store_releases.moc"
