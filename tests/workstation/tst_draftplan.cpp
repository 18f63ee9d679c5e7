// SPDX-License-Identifier: Apache-2.0

#include "DraftDialog.h"
#include "DraftPlan.h"
#include "ModalDriver.h"
#include "TestApp.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

Q_DECLARE_METATYPE(VersionServiceVersion)

namespace
{
RpaDraft Draft(const QString& versionId = QStringLiteral("v1"), int baseRevision = 3)
{
    RpaDraft draft;
    draft.appId = QStringLiteral("app");
    draft.versionId = versionId;
    draft.baseRevision = baseRevision;
    draft.sha256 = "draft";
    draft.writtenAt = QDateTime::currentDateTimeUtc();
    return draft;
}

VersionServiceVersion Version(const QString& id, int revision, int state = 1,
                              const QByteArray& sha256 = "server")
{
    return {id, QStringLiteral("名称") + id, state, revision, sha256, QStringLiteral("colleague")};
}
} // namespace

// What is offered of a draft, and where it goes back to.
class DraftPlanTest : public QObject
{
    Q_OBJECT

private slots:
    void goesBackToItsVersion();
    void seesThatTheVersionIsNewer();
    void goesOnFromASaveOfItsOwn_data();
    void goesOnFromASaveOfItsOwn();
    void seesThatTheVersionWasReleased();
    void isShownAsAnotherVersionWhenItsOwnIsGone();
    void isShownAsAVersionWhenItHadNone();
    void startsTheAppAnewWhenNoVersionCanBeOpened_data();
    void startsTheAppAnewWhenNoVersionCanBeOpened();
    void isSavedWhenTheServerHasItsContent_data();
    void isSavedWhenTheServerHasItsContent();

    void decidesNothingWhenItIsClosed();
    void restoresByTheDefaultButton();
    void asksBeforeItDiscards();
    void saysWhatBecomesOfTheWork_data();
    void saysWhatBecomesOfTheWork();
};

void DraftPlanTest::goesBackToItsVersion()
{
    const DraftPlan plan =
        DraftPlan::For(Draft(), {Version(QStringLiteral("v2"), 1), Version(QStringLiteral("v1"), 3)});

    QVERIFY(!plan.isSaved);
    QCOMPARE(plan.base, DraftPlan::Base::Current);
    QCOMPARE(plan.targetId, QStringLiteral("v1"));
    QCOMPARE(plan.targetRevision, 3);
    QVERIFY(!plan.NeedsNewVersion());
}

void DraftPlanTest::seesThatTheVersionIsNewer()
{
    const DraftPlan plan = DraftPlan::For(Draft(), {Version(QStringLiteral("v1"), 5)});

    QCOMPARE(plan.base, DraftPlan::Base::Newer);
    QCOMPARE(plan.targetId, QStringLiteral("v1"));
    QCOMPARE(plan.targetRevision, 3);
    QCOMPARE(plan.revision, 5);
    QCOMPARE(plan.savedBy, QStringLiteral("colleague"));
    QVERIFY(plan.NeedsNewVersion());
}

void DraftPlanTest::goesOnFromASaveOfItsOwn_data()
{
    QTest::addColumn<QString>("versionId");
    QTest::addColumn<QVector<VersionServiceVersion>>("versions");
    QTest::addColumn<bool>("isOwn");
    const QString v1 = QStringLiteral("v1");
    const QString v2 = QStringLiteral("v2");
    QTest::newRow("its version") << v1
                                 << QVector<VersionServiceVersion>{Version(v2, 1), Version(v1, 5, 1, "sent")}
                                 << true;
    QTest::newRow("the save before that")
        << v1 << QVector<VersionServiceVersion>{Version(v1, 5, 1, "sent before")} << true;
    QTest::newRow("its first version")
        << QString() << QVector<VersionServiceVersion>{Version(v2, 1), Version(v1, 5, 1, "sent")} << true;
    QTest::newRow("saved by another since") << v1 << QVector<VersionServiceVersion>{Version(v1, 5)} << false;
    QTest::newRow("in another version")
        << v1 << QVector<VersionServiceVersion>{Version(v1, 5), Version(v2, 5, 1, "sent")} << false;
    QTest::newRow("older than the work")
        << v1 << QVector<VersionServiceVersion>{Version(v1, 2, 1, "sent")} << false;
}

void DraftPlanTest::goesOnFromASaveOfItsOwn()
{
    QFETCH(QString, versionId);
    QFETCH(QVector<VersionServiceVersion>, versions);
    QFETCH(bool, isOwn);
    RpaDraft draft = Draft(versionId, versionId.isEmpty() ? 0 : 3);
    draft.inDoubt = {"sent before", "sent"};

    const DraftPlan plan = DraftPlan::For(draft, versions);

    QCOMPARE(plan.base, isOwn ? DraftPlan::Base::Current : DraftPlan::Base::Newer);
    QCOMPARE(plan.targetId, QStringLiteral("v1"));
    QCOMPARE(plan.targetRevision, isOwn ? 5 : 3);
    QCOMPARE(plan.NeedsNewVersion(), !isOwn);
    const DraftDialog dialog(QStringLiteral("应用"), draft, plan, DateLanguage::Chinese, nullptr);
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("labelVersion"))->text(),
             QStringLiteral("名称v1（修订 %1）").arg(isOwn ? 5 : 3));
}

void DraftPlanTest::seesThatTheVersionWasReleased()
{
    const DraftPlan plan =
        DraftPlan::For(Draft(), {Version(QStringLiteral("v1"), 3, 2), Version(QStringLiteral("v2"), 1)});

    QCOMPARE(plan.base, DraftPlan::Base::Released);
    QCOMPARE(plan.targetId, QStringLiteral("v1"));
    QVERIFY(plan.NeedsNewVersion());
}

void DraftPlanTest::isShownAsAnotherVersionWhenItsOwnIsGone()
{
    const DraftPlan plan =
        DraftPlan::For(Draft(), {Version(QStringLiteral("v8"), 3, 3), Version(QStringLiteral("v9"), 3)});

    QCOMPARE(plan.base, DraftPlan::Base::Gone);
    QCOMPARE(plan.targetId, QStringLiteral("v9"));
    QCOMPARE(plan.targetRevision, 0);
    QVERIFY(plan.NeedsNewVersion());
}

void DraftPlanTest::isShownAsAVersionWhenItHadNone()
{
    const DraftPlan plan = DraftPlan::For(Draft(QString(), 0), {Version(QStringLiteral("v9"), 3)});

    QCOMPARE(plan.base, DraftPlan::Base::None);
    QCOMPARE(plan.targetId, QStringLiteral("v9"));
    QCOMPARE(plan.targetRevision, 0);
    QVERIFY(plan.NeedsNewVersion());
}

void DraftPlanTest::startsTheAppAnewWhenNoVersionCanBeOpened_data()
{
    QTest::addColumn<QString>("versionId");
    QTest::addColumn<QVector<VersionServiceVersion>>("versions");
    QTest::newRow("never saved") << QString() << QVector<VersionServiceVersion>();
    QTest::newRow("all deleted") << QStringLiteral("v1") << QVector<VersionServiceVersion>();
    QTest::newRow("all released") << QStringLiteral("v1")
                                  << QVector<VersionServiceVersion>{Version(QStringLiteral("v1"), 3, 3)};
}

void DraftPlanTest::startsTheAppAnewWhenNoVersionCanBeOpened()
{
    QFETCH(QString, versionId);
    QFETCH(QVector<VersionServiceVersion>, versions);

    const DraftPlan plan = DraftPlan::For(Draft(versionId), versions);

    QVERIFY(plan.targetId.isEmpty());
    QVERIFY(!plan.NeedsNewVersion());
}

void DraftPlanTest::isSavedWhenTheServerHasItsContent_data()
{
    QTest::addColumn<QString>("versionId");
    QTest::addColumn<QString>("savedId");
    QTest::addColumn<bool>("isSaved");
    QTest::newRow("in its version") << QStringLiteral("v1") << QStringLiteral("v1") << true;
    QTest::newRow("in its first version") << QString() << QStringLiteral("v7") << true;
    QTest::newRow("in another version only") << QStringLiteral("v1") << QStringLiteral("v7") << false;
}

void DraftPlanTest::isSavedWhenTheServerHasItsContent()
{
    QFETCH(QString, versionId);
    QFETCH(QString, savedId);
    QFETCH(bool, isSaved);

    const DraftPlan plan = DraftPlan::For(Draft(versionId), {Version(savedId, 4, 1, "draft")});

    QCOMPARE(plan.isSaved, isSaved);
}

void DraftPlanTest::decidesNothingWhenItIsClosed()
{
    const RpaDraft draft = Draft();
    DraftDialog dialog(QStringLiteral("应用"), draft, DraftPlan::For(draft, {}), DateLanguage::Chinese,
                       nullptr);
    ModalDriver modals;
    modals.Then([](QWidget* box) { QTest::keyClick(box, Qt::Key_Escape); });

    dialog.exec();

    QCOMPARE(dialog.GetChoice(), DraftDialog::Choice::Later);
}

void DraftPlanTest::restoresByTheDefaultButton()
{
    const RpaDraft draft = Draft();
    DraftDialog dialog(QStringLiteral("应用"), draft, DraftPlan::For(draft, {}), DateLanguage::Chinese,
                       nullptr);
    ModalDriver modals;
    modals.Then([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });

    dialog.exec();

    QCOMPARE(dialog.GetChoice(), DraftDialog::Choice::Restore);
}

void DraftPlanTest::asksBeforeItDiscards()
{
    const RpaDraft draft = Draft();
    DraftDialog dialog(QStringLiteral("应用"), draft, DraftPlan::For(draft, {}), DateLanguage::Chinese,
                       nullptr);
    ModalDriver modals;
    modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("丢弃草稿"))); });
    modals.Then([&dialog](QWidget* question) {
        QCOMPARE(dialog.GetChoice(), DraftDialog::Choice::Later);
        QVERIFY(ModalDriver::Press(question, QStringLiteral("丢弃")));
    });

    dialog.exec();

    QCOMPARE(dialog.GetChoice(), DraftDialog::Choice::Discard);
}

void DraftPlanTest::saysWhatBecomesOfTheWork_data()
{
    QTest::addColumn<QVector<VersionServiceVersion>>("versions");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("outlook");
    const auto one = [](int revision, int state = 1) {
        return QVector<VersionServiceVersion>{Version(QStringLiteral("v1"), revision, state),
                                              Version(QStringLiteral("v2"), 1)};
    };
    QTest::newRow("as it was") << one(3) << QStringLiteral("名称v1（修订 3）")
                               << QStringLiteral("保存后才写入该版本");
    QTest::newRow("newer") << one(5) << QStringLiteral("名称v1（修订 3）")
                           << QStringLiteral("“colleague”又保存过该版本");
    QTest::newRow("released") << one(3, 3) << QStringLiteral("名称v1（修订 3）")
                              << QStringLiteral("已经发布");
    QTest::newRow("gone") << QVector<VersionServiceVersion>{Version(QStringLiteral("v2"), 1)}
                          << QStringLiteral("已被删除的版本（修订 3）") << QStringLiteral("已从服务器上删除");
    QTest::newRow("gone, and nothing left")
        << QVector<VersionServiceVersion>() << QStringLiteral("已被删除的版本（修订 3）")
        << QStringLiteral("会创建一个新版本");
}

void DraftPlanTest::saysWhatBecomesOfTheWork()
{
    QFETCH(QVector<VersionServiceVersion>, versions);
    QFETCH(QString, version);
    QFETCH(QString, outlook);
    const RpaDraft draft = Draft();
    const DraftDialog dialog(QStringLiteral("应用"), draft, DraftPlan::For(draft, versions),
                             DateLanguage::Chinese, nullptr);
    const auto text = [&dialog](const char* name) {
        return dialog.findChild<QLabel*>(QLatin1String(name))->text();
    };

    QCOMPARE(text("labelVersion"), version);
    QVERIFY2(text("labelOutlook").contains(outlook), qPrintable(text("labelOutlook")));
    QCOMPARE(text("labelTime"), DateText(draft.writtenAt, DateLanguage::Chinese));
    QVERIFY(text("labelCaption").contains(QStringLiteral("“应用”")));
}

RPA_TEST_MAIN(DraftPlanTest)
#include "tst_draftplan.moc"
