// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "rules/NoteRules.h"

#include <QTest>

using namespace server;

// What authors say of their saves.
class StoreNotesTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void tellsWhoSavedWhenAndWithWhichNote_data() { Databases(); }
    void tellsWhoSavedWhenAndWithWhichNote();
    void keepsOldSavesWithANoteInTheList_data() { Databases(); }
    void keepsOldSavesWithANoteInTheList();
    void takesTheFormerNoteAway_data() { Databases(); }
    void takesTheFormerNoteAway();
    void letsOnlyWhoeverSavedSpeak_data() { Databases(); }
    void letsOnlyWhoeverSavedSpeak();

private:
    Version Overwrite(const Version& version, const Account& account, qint64 now)
    {
        const VersionDraft draft = DraftOf(version.name, "{}");
        const auto outcome = InWrite([&](Transaction& t) {
            return rules::OverwriteVersion(t, account, version.id, version.revision, draft, now);
        });
        return std::get<Version>(outcome);
    }
    Outcome<QString> Note(const Account& account, const Version& version, const QString& note)
    {
        return InWrite([&](Transaction& t) {
            return rules::NoteSave(t, account, version.id, version.revision, note, 9000);
        });
    }
};

void StoreNotesTest::tellsWhoSavedWhenAndWithWhichNote()
{
    const Version older = Save(QStringLiteral("甲"), "{\"n\":1}");
    const Version changed = Overwrite(older, colleague, 7000);
    const Version newer = Save(QStringLiteral("乙"), "{\"n\":2}");

    QCOMPARE(std::get<QString>(Note(colleague, changed, QStringLiteral("改了登录"))),
             QStringLiteral("改了登录"));
    QCOMPARE(std::get<QString>(Note(author, older, QStringLiteral("第一版"))), QStringLiteral("第一版"));

    const auto saves = store->SavesOf(app.id);
    QCOMPARE(saves.size(), std::size_t{3});
    QCOMPARE(saves.at(0).versionId, newer.id);
    QCOMPARE(saves.at(0).note, QString());
    QCOMPARE(saves.at(1).versionId, older.id);
    QCOMPARE(saves.at(1).revision, qint64{2});
    QCOMPARE(saves.at(1).pin, colleague.pin);
    QCOMPARE(saves.at(1).name, colleague.name);
    QCOMPARE(saves.at(1).savedAt, qint64{7000});
    QCOMPARE(saves.at(1).note, QStringLiteral("改了登录"));
    QCOMPARE(saves.at(2).revision, qint64{1});
    QCOMPARE(saves.at(2).name, author.name);
    QCOMPARE(saves.at(2).note, QStringLiteral("第一版"));
    QCOMPARE(store->FindVersion(older.id)->revision, qint64{2});
    QCOMPARE(store->FindVersion(older.id)->changedAt, qint64{7000});
}

void StoreNotesTest::keepsOldSavesWithANoteInTheList()
{
    constexpr qint64 many = 9;
    Version version = Save(QStringLiteral("甲"), "{\"n\":1}");
    Note(author, version, QStringLiteral("第一版"));
    while (version.revision < many)
        version = Overwrite(version, author, 1000 * version.revision);

    QVector<qint64> revisions;
    for (const SavedRevision& save : store->SavesOf(app.id))
        revisions.append(save.revision);

    QCOMPARE(revisions, (QVector<qint64>{9, 8, 7, 6, 5, 1}));
}

void StoreNotesTest::takesTheFormerNoteAway()
{
    const Version version = Save(QStringLiteral("甲"), "{\"n\":1}");
    Note(author, version, QStringLiteral("改错"));
    Note(author, version, QStringLiteral("改了登录"));
    QCOMPARE(store->SavesOf(app.id).front().note, QStringLiteral("改了登录"));

    Note(author, version, QString::fromLatin1(""));

    QCOMPARE(store->SavesOf(app.id).front().note, QString());
}

void StoreNotesTest::letsOnlyWhoeverSavedSpeak()
{
    const Version version = Save(QStringLiteral("甲"), "{\"n\":1}");
    Version missing = version;
    missing.revision = 2;

    QCOMPARE(std::get<Refusal>(Note(colleague, version, QStringLiteral("别人"))).status, 403);
    QCOMPARE(std::get<Refusal>(Note(foreigner, version, QStringLiteral("别人"))).status, 404);
    QCOMPARE(std::get<Refusal>(Note(author, missing, QStringLiteral("没有"))).status, 404);

    QCOMPARE(store->SavesOf(app.id).front().note, QString());
}

QTEST_GUILESS_MAIN(StoreNotesTest)

#include "tst_store_notes.moc"
