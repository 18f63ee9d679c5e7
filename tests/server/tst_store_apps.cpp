// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "rules/TakeBackRules.h"

#include <QTest>

using namespace server;

// What the list of apps tells: tags, state, who changed an app when.
class StoreAppsTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void tellsWhoChangedAnAppLast_data() { Databases(); }
    void tellsWhoChangedAnAppLast();
    void keepsTagsWithoutCountingThemAsAChange_data() { Databases(); }
    void keepsTagsWithoutCountingThemAsAChange();
    void refusesAChangeByWhoMayNotEdit_data() { Databases(); }
    void refusesAChangeByWhoMayNotEdit();
    void tellsWhatUsersHaveOfAnApp_data() { Databases(); }
    void tellsWhatUsersHaveOfAnApp();

private:
    Outcome<App> Change(const Account& account, const AppChange& change, qint64 now = 5000)
    {
        return InWrite([&](Transaction& t) { return rules::ChangeApp(t, account, app.id, change, now); });
    }
    // As the list has it, which is what a single look at the app must say too.
    App Shown() const
    {
        const App listed = store->AppsEditableBy(author).front();
        const App single = *store->FindApp(listed.id);
        return single.state == listed.state && single.tags == listed.tags &&
                       single.changedBy == listed.changedBy
                   ? listed
                   : App();
    }
};

void StoreAppsTest::tellsWhoChangedAnAppLast()
{
    QCOMPARE(Shown().changedBy, author.pin);
    QCOMPARE(Shown().changedByName, author.name);

    InWrite([&](Transaction& t) {
        return rules::CreateVersion(t, colleague, app.id, DraftOf(QStringLiteral("甲"), "{}"), 3000);
    });
    QCOMPARE(Shown().changedBy, colleague.pin);
    QCOMPARE(Shown().changedByName, colleague.name);
    QCOMPARE(Shown().changedAt, qint64{3000});

    const auto renamed = std::get<App>(Change(author, {QStringLiteral("新名"), {}}, 4000));
    QCOMPARE(renamed.changedByName, author.name);
    QCOMPARE(Shown().name, QStringLiteral("新名"));
    QCOMPARE(Shown().changedBy, author.pin);
    QCOMPARE(Shown().changedAt, qint64{4000});
}

void StoreAppsTest::keepsTagsWithoutCountingThemAsAChange()
{
    const QStringList tags{QStringLiteral("财务"), QStringLiteral("月结, 季结")};

    QCOMPARE(std::get<App>(Change(colleague, {{}, tags})).tags, tags);
    QCOMPARE(Shown().tags, tags);
    QCOMPARE(Shown().name, app.name);
    QCOMPARE(Shown().changedAt, app.changedAt);
    QCOMPARE(Shown().changedBy, author.pin);

    Change(author, {QStringLiteral("新名"), {}});
    QCOMPARE(Shown().tags, tags);
    OpenFresh();
    QCOMPARE(Shown().tags, tags);
    Change(author, {{}, QStringList()});
    QCOMPARE(Shown().tags, QStringList());
}

void StoreAppsTest::refusesAChangeByWhoMayNotEdit()
{
    for (const Account& account : {foreigner, administrator}) {
        const auto outcome = Change(account, {QStringLiteral("新名"), QStringList{QStringLiteral("财务")}});
        QCOMPARE(std::get<Refusal>(outcome).status, 404);
    }

    QCOMPARE(Shown().name, app.name);
    QCOMPARE(Shown().tags, QStringList());
}

void StoreAppsTest::tellsWhatUsersHaveOfAnApp()
{
    const auto takeBack = [this](VersionState state, const QString& from) {
        InWrite([&](Transaction& t) {
            return rules::TakeBack(t, author, app.id, {state, from, {}, QStringLiteral("停")}, 6000);
        });
    };
    QCOMPARE(Shown().state, 1);
    Save(QStringLiteral("甲"), "{}");
    QCOMPARE(Shown().state, 1);
    const Version gray = Released(QStringLiteral("乙"), ReleaseType::Gray, 1000);
    QCOMPARE(Shown().state, 2);
    const Version online = Released(QStringLiteral("丙"), ReleaseType::Online, 2000);
    QCOMPARE(Shown().state, 3);

    takeBack(VersionState::Online, online.id);
    QCOMPARE(Shown().state, 2);
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, gray.id, 1, 7000); });
    QCOMPARE(Shown().state, 1);
}

QTEST_GUILESS_MAIN(StoreAppsTest)

#include "tst_store_apps.moc"
