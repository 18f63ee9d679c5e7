// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "rules/UsageRules.h"

#include <QTest>

using namespace server;

// What accounts did, as their administrators count it.
class StoreUsageTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void countsEachEventOnceByDay_data() { Databases(); }
    void countsEachEventOnceByDay();
    void showsAVendorItsOwn_data() { Databases(); }
    void showsAVendorItsOwn();
    void boundsTheDayOfAnAccount_data() { Databases(); }
    void boundsTheDayOfAnAccount();
    void forgetsWhatIsOutdated_data() { Databases(); }
    void forgetsWhatIsOutdated();

private:
    void Keep(const Account& account, const std::vector<UsageEvent>& events)
    {
        store->SubmitAndWait([&](Transaction& t) { rules::KeepUsage(t, account, events); });
    }
    QStringList Counts(const QString& vender, qint64 fromDay = 0, int most = 100)
    {
        QStringList lines;
        for (const UsageCount& count : store->UsageOf(vender, fromDay, most))
            lines << QStringLiteral("%1 %2 %3").arg(count.day).arg(count.event).arg(count.count);
        return lines;
    }
    static UsageEvent Event(const char* id, const char* event, qint64 day)
    {
        return {QString::fromLatin1(id), QString::fromLatin1(event), day};
    }
};

void StoreUsageTest::countsEachEventOnceByDay()
{
    Keep(author, {Event("1", "Run", 7), Event("2", "Save", 7), Event("3", "Save", 8), Event("3", "Save", 8)});
    Keep(author, {Event("2", "Save", 7), Event("4", "Save", 8)});
    Keep(colleague, {Event("2", "Save", 7)});

    QCOMPARE(Counts(author.venderId), (QStringList{QStringLiteral("8 Save 2"), QStringLiteral("7 Run 1"),
                                                   QStringLiteral("7 Save 2")}));
    QCOMPARE(Counts(author.venderId, 8), QStringList{QStringLiteral("8 Save 2")});
    QCOMPARE(Counts(author.venderId, 0, 1), QStringList{QStringLiteral("8 Save 2")});
}

void StoreUsageTest::showsAVendorItsOwn()
{
    Keep(foreigner, {Event("1", "Save", 7)});

    QCOMPARE(Counts(author.venderId), QStringList());
    QCOMPARE(Counts(foreigner.venderId), QStringList{QStringLiteral("7 Save 1")});
}

void StoreUsageTest::boundsTheDayOfAnAccount()
{
    std::vector<UsageEvent> many;
    for (int i = 0; i < 2500; ++i)
        many.push_back({QString::number(i), QStringLiteral("Save"), 7});
    Keep(author, {Event("first", "Save", 7)});

    Keep(author, many);
    Keep(author, {Event("other day", "Save", 6)});
    Keep(colleague, {Event("other account", "Save", 7)});

    QCOMPARE(Counts(author.venderId),
             (QStringList{QStringLiteral("7 Save 2001"), QStringLiteral("6 Save 1")}));
}

void StoreUsageTest::forgetsWhatIsOutdated()
{
    std::vector<UsageEvent> many;
    for (int i = 0; i < 1500; ++i)
        many.push_back({QString::number(i), QStringLiteral("Save"), 6});
    Keep(author, many);
    Keep(author, {Event("fresh", "Save", 7)});

    int turns = 1;
    while (!std::get<bool>(InWrite([](Transaction& t) { return t.RemoveOutdated(0, 0, 7); })))
        ++turns;

    QCOMPARE(turns, 2);
    QCOMPARE(Counts(author.venderId), QStringList{QStringLiteral("7 Save 1")});
}

QTEST_GUILESS_MAIN(StoreUsageTest)

#include "tst_store_usage.moc"
