// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "base/Clock.h"
#include "rules/InvitationRules.h"

#include <QTest>

using namespace server;

// Apps that are deleted, restored, taken away for good and copied.
class StoreBinTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void takesADeletedAppFromEverybody_data() { Databases(); }
    void takesADeletedAppFromEverybody();
    void restoresAnAppAsItWas_data() { Databases(); }
    void restoresAnAppAsItWas();
    void restoresUnderAFreeName_data() { Databases(); }
    void restoresUnderAFreeName();
    void restoresForThirtyDays_data() { Databases(); }
    void restoresForThirtyDays();
    void purgesForGood_data() { Databases(); }
    void purgesForGood();
    void deletesForCreatorsAndAdministratorsOnly_data() { Databases(); }
    void deletesForCreatorsAndAdministratorsOnly();
    void showsTheBinToWhoMayRestore_data() { Databases(); }
    void showsTheBinToWhoMayRestore();
    void copiesAllVersionsIntoDevelopment_data() { Databases(); }
    void copiesAllVersionsIntoDevelopment();
    void copiesForAuthorsOfTheVendorOnly_data() { Databases(); }
    void copiesForAuthorsOfTheVendorOnly();

private:
    using Rule = App (*)(Transaction&, const Account&, const QString&, qint64);

    Outcome<App> Do(Rule rule, const Account& account, qint64 now)
    {
        return InWrite([&](Transaction& t) { return rule(t, account, app.id, now); });
    }
    Outcome<App> Copy(const Account& account, qint64 mostBytes = mostCopiedBytes)
    {
        return InWrite([&](Transaction& t) { return rules::CopyApp(t, account, app.id, 8000, mostBytes); });
    }
    static bool Is404(const Outcome<App>& outcome)
    {
        const auto* refusal = std::get_if<Refusal>(&outcome);
        return refusal && refusal->status == 404;
    }
    std::vector<App> Bin(const Account& account) const { return store->DeletedApps(account, 0); }
};

void StoreBinTest::takesADeletedAppFromEverybody()
{
    const Version online = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    Released(QStringLiteral("乙"), ReleaseType::Gray, 2000);
    const QString code = store->InvitationsOf(app.id).front().code;
    const auto redeem = [&] {
        return InWrite([&](Transaction& t) { return rules::RedeemInvitation(t, foreigner, code, 3000); });
    };
    QVERIFY(std::holds_alternative<ReleasedApp>(redeem()));
    QVERIFY(store->FindApp(app.id)); // what is remembered of it must not outlive the act

    QVERIFY(std::holds_alternative<App>(Do(rules::DeleteApp, author, 4000)));

    QVERIFY(!store->FindApp(app.id));
    QVERIFY(store->AppsEditableBy(author).empty());
    QVERIFY(store->AppsEditableBy(colleague).empty());
    QVERIFY(store->OnlineApps(author.venderId).empty());
    QVERIFY(store->GrayApps(foreigner.pin).empty());
    QCOMPARE(std::get<Refusal>(redeem()).code, "bad-invitation");
    const auto saved = InWrite([&](Transaction& t) {
        return rules::OverwriteVersion(t, author, online.id, 1, DraftOf({}, "{}"), 5000);
    });
    QCOMPARE(std::get<Refusal>(saved).status, 404);
    QVERIFY(Is404(Do(rules::DeleteApp, author, 6000)));
    const AuditEntry entry = store->Audit(author.venderId, {}, 1).front();
    QCOMPARE(entry.act, QStringLiteral("app.delete"));
    QCOMPARE(entry.pin, author.pin);
    QCOMPARE(entry.at, qint64{4000});
    QCOMPARE(entry.appId, app.id);
    QCOMPARE(entry.detail, QStringLiteral("应用"));
}

void StoreBinTest::restoresAnAppAsItWas()
{
    const Version online = Released(QStringLiteral("甲"), ReleaseType::Online, 1000);
    const App before = *store->FindApp(app.id);
    Do(rules::DeleteApp, author, 4000);

    const auto restored = Do(rules::RestoreApp, administrator, 5000);

    QCOMPARE(std::get<App>(restored).name, before.name);
    const App after = *store->FindApp(app.id);
    QCOMPARE(after.name, before.name);
    QCOMPARE(after.changedAt, before.changedAt);
    QCOMPARE(after.changedBy, before.changedBy);
    QCOMPARE(store->OnlineApps(author.venderId).front().version.id, online.id);
    QVERIFY(Bin(author).empty());
    const AuditEntry entry = store->Audit(author.venderId, {}, 1).front();
    QCOMPARE(entry.act, QStringLiteral("app.restore"));
    QCOMPARE(entry.pin, administrator.pin);
}

void StoreBinTest::restoresUnderAFreeName()
{
    Do(rules::DeleteApp, author, 4000);
    const auto other = InWrite(
        [](Transaction& t) { return rules::CreateApp(t, colleague, QStringLiteral("应用"), 1, 4500); });
    QVERIFY(std::holds_alternative<App>(other));

    QCOMPARE(std::get<App>(Do(rules::RestoreApp, author, 5000)).name, QStringLiteral("应用 2"));

    QCOMPARE(store->FindApp(app.id)->name, QStringLiteral("应用 2"));
    QCOMPARE(store->FindApp(std::get<App>(other).id)->name, QStringLiteral("应用"));
}

void StoreBinTest::restoresForThirtyDays()
{
    Do(rules::DeleteApp, author, 4000);

    QVERIFY(Is404(Do(rules::RestoreApp, author, 4001 + 30 * dayMs)));
    QVERIFY(store->DeletedApps(author, 4001).empty());
    QCOMPARE(store->DeletedApps(author, 4000).size(), std::size_t{1});
    QVERIFY(std::holds_alternative<App>(Do(rules::RestoreApp, author, 4000 + 30 * dayMs)));
}

void StoreBinTest::purgesForGood()
{
    QVERIFY(Is404(Do(rules::PurgeApp, author, 3000)));
    Do(rules::DeleteApp, author, 4000);

    QVERIFY(Is404(Do(rules::PurgeApp, colleague, 5000)));
    QVERIFY(std::holds_alternative<App>(Do(rules::PurgeApp, author, 5000)));

    QVERIFY(Bin(author).empty());
    QVERIFY(Is404(Do(rules::RestoreApp, author, 6000)));
    QVERIFY(Is404(Do(rules::PurgeApp, author, 6000)));
    QCOMPARE(store->Audit(author.venderId, {}, 1).front().act, QStringLiteral("app.purge"));
}

void StoreBinTest::deletesForCreatorsAndAdministratorsOnly()
{
    QCOMPARE(std::get<Refusal>(Do(rules::DeleteApp, colleague, 4000)).status, 403);
    QVERIFY(Is404(Do(rules::DeleteApp, foreigner, 4000)));
    QVERIFY(store->FindApp(app.id));

    QVERIFY(std::holds_alternative<App>(Do(rules::DeleteApp, administrator, 4000)));

    QVERIFY(Is404(Do(rules::RestoreApp, colleague, 5000)));
    QVERIFY(Is404(Do(rules::RestoreApp, foreigner, 5000)));
    QVERIFY(!store->FindApp(app.id));
}

void StoreBinTest::showsTheBinToWhoMayRestore()
{
    const App mine = app;
    app = std::get<App>(InWrite(
        [](Transaction& t) { return rules::CreateApp(t, colleague, QStringLiteral("同事的"), 0, 1); }));
    Do(rules::DeleteApp, colleague, 4000);
    app = mine;
    Do(rules::DeleteApp, author, 5000);

    QCOMPARE(Bin(author).size(), std::size_t{1});
    QCOMPARE(Bin(author).front().id, mine.id);
    QCOMPARE(Bin(author).front().deletedAt, qint64{5000});
    QCOMPARE(Bin(administrator).size(), std::size_t{2});
    QCOMPARE(Bin(administrator).front().id, mine.id);
    QVERIFY(Bin(foreigner).empty());
}

void StoreBinTest::copiesAllVersionsIntoDevelopment()
{
    InWrite([&](Transaction& t) {
        return rules::ChangeApp(t, author, app.id, {{}, QStringList{QStringLiteral("财务")}}, 1);
    });
    InWrite([&](Transaction& t) {
        const Version first =
            rules::CreateVersion(t, author, app.id, DraftOf(QStringLiteral("甲"), "{\"n\":1}"), 2);
        return rules::ReleaseVersion(t, author, first.id, 1, ReleaseType::Online, 3);
    });
    Save(QStringLiteral("甲"), "{\"n\":2}");

    const auto copied = Copy(colleague);
    const App copy = std::get<App>(copied);

    QCOMPARE(copy.name, QStringLiteral("应用 副本"));
    QCOMPARE(copy.creator, colleague.pin);
    QCOMPARE(copy.tags, QStringList{QStringLiteral("财务")});
    const auto versions = store->VersionsOf(copy.id); // newest creation first
    QCOMPARE(versions->size(), std::size_t{3});
    QCOMPARE(versions->at(2).name, QStringLiteral("甲"));
    QCOMPARE(versions->at(2).description, QStringLiteral("描述"));
    QCOMPARE(versions->at(2).state, VersionState::Develop);
    QCOMPARE(store->ReadBody(versions->at(2).id, 1), QByteArray("{\"n\":1}"));
    QCOMPARE(versions->at(0).name, QStringLiteral("甲 2"));
    QCOMPARE(store->ReadBody(versions->at(0).id, 1), QByteArray("{\"n\":2}"));
    QCOMPARE(store->OnlineApps(author.venderId).size(), std::size_t{1});
    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{3});
    QCOMPARE(std::get<App>(Copy(author)).name, QStringLiteral("应用 副本 2"));
}

void StoreBinTest::copiesForAuthorsOfTheVendorOnly()
{
    Save(QStringLiteral("甲"), "{\"n\":1}");

    QVERIFY(Is404(Copy(foreigner)));
    QVERIFY(Is404(Copy(administrator)));
    QCOMPARE(std::get<Refusal>(Copy(author, 6)).code, "too-large");
    QCOMPARE(store->AppsEditableBy(author).size(), std::size_t{1});
    QVERIFY(std::holds_alternative<App>(Copy(author, 7)));
}

QTEST_GUILESS_MAIN(StoreBinTest)

#include "tst_store_bin.moc"
