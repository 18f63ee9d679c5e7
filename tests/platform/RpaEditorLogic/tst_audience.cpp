// SPDX-License-Identifier: Apache-2.0

#include "EditorLogicFixture.h"
#include "TestApp.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

using namespace VersionExamples;

namespace
{
const QString x = QStringLiteral("app1");
const QString y = QStringLiteral("app2");

// Hears what an editor hears, or its dialog.
class Party : public QObject, public HttpObserverBase
{
public:
    explicit Party(bool isEditor = true)
    {
        QList<int> ids = {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo,
                          NotifyDeleteAppSnapshotInfo};
        if (isEditor)
            ids << NotifyGetSnapshotList << NotifyGetDevSnapshotData << NotifyGrayOrRelease;
        HttpNotifyManager::Instance()->AddObserver(this, ids);
    }
    ~Party() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest>,
                      QSharedPointer<IHttpResponse> response) override
    {
        heard.append(notifyId);
        errors.append(response->GetErrorDesc());
    }

    QList<int> heard;
    QStringList errors;
};

VersionReplies::Version OfY(const QString& id)
{
    VersionReplies::Version version = EditorLogicFixture::Version(id);
    version.appId = y;
    return version;
}
} // namespace

// Whom an answer is for.
class AudienceTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void leavesAnEditorAloneThatCameLater_data();
    void leavesAnEditorAloneThatCameLater();
    void letsOnlookersHearEverything();
    void tellsTwoEditorsOfDifferentAppsApart();
    void opensTwoEditorsInTheOrderInWhichTheyWereMade();
    void failsAListThatWasOvertakenByAnotherApp();
    void turnsAnEditorToAnotherApp();
    void answersASaveWhateverItsEditorShowsNow();
    void answersASaveToTheEditorOfItsContentOnly_data();
    void answersASaveToTheEditorOfItsContentOnly();
    void answersASaveOfAnAppThatItsEditorHadBefore();
    void tellsASaveToAnEditorThatMayShowTheApp();
    void letsALaterDialogHearItsEditorsDeletion();
    void leavesALaterDialogOfAnotherEditorAlone();
    void refusesAListOfAnotherApp();
    void savesForAnAppThatIsNotShown();
    void namesWhatIsUnderWay();
    void tellsOfAFailedSaveWhoseEditorIsGone();
    void tellsOfAFailedSaveWhoseDialogIsGone();
    void leavesAFailedSaveToItsEditor();

private:
    // The answers come by the app that the path names; whatever else is asked for comes late.
    void ServeBothApps();
    void Wait(int count) { QTRY_COMPARE(fixture->answers.Count(), count); }

    std::unique_ptr<EditorLogicFixture> fixture;
};

void AudienceTest::init()
{
    fixture = std::make_unique<EditorLogicFixture>();
    ServeBothApps();
}

void AudienceTest::cleanup()
{
    fixture.reset();
}

void AudienceTest::ServeBothApps()
{
    fixture->server.SetScript([](const FaultServer::Request& request) {
        if (request.path.endsWith("/release"))
            return Late(VersionReplies::Released(1, true, QString(), EditorLogicFixture::Version(v1, 2)));
        if (request.method == "DELETE")
            return Late(VersionReplies::Deleted());
        if (request.method == "PUT" || request.method == "POST")
            return Late(FaultServer::Refusal(500, "broken", QStringLiteral("坏了")));
        if (request.path.endsWith("/data"))
            return FaultServer::Data(VersionReplies::App(), 1);
        if (request.path.contains("app2"))
            return VersionReplies::List({OfY(v2)});
        return VersionReplies::List(
            {EditorLogicFixture::Version(v1), EditorLogicFixture::Version(QStringLiteral("v3"))});
    });
}

void AudienceTest::leavesAnEditorAloneThatCameLater_data()
{
    QTest::addColumn<int>("asked");

    QTest::newRow("list") << int(NotifyGetSnapshotList);
    QTest::newRow("deletion") << int(NotifyDeleteAppSnapshotInfo);
    QTest::newRow("release") << int(NotifyGrayOrRelease);
    QTest::newRow("data") << int(NotifyGetDevSnapshotData);
}

void AudienceTest::leavesAnEditorAloneThatCameLater()
{
    QFETCH(const int, asked);
    auto before = std::make_unique<Party>();
    fixture->List(x);
    Wait(1);
    if (asked == NotifyGetSnapshotList)
        fixture->List(x);
    else if (asked == NotifyDeleteAppSnapshotInfo)
        fixture->Delete(v1);
    else if (asked == NotifyGrayOrRelease)
        fixture->Release(v1, 1);
    else
        fixture->Load(v1);

    before.reset();
    Party now;
    fixture->List(y);

    Wait(3);
    QCOMPARE(now.heard, QList<int>{NotifyGetSnapshotList});
    QCOMPARE(now.errors, QStringList(QString()));
    QCOMPARE(fixture->Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void AudienceTest::letsOnlookersHearEverything()
{
    fixture->List(x);
    fixture->List(y);
    AnswerRecorder later;

    QTRY_COMPARE(later.Count(), 2);
}

void AudienceTest::tellsTwoEditorsOfDifferentAppsApart()
{
    Party ofX;
    fixture->List(x);
    Wait(1);
    Party ofY;
    fixture->List(y);
    Wait(2);
    ofX.heard.clear();
    ofY.heard.clear();

    fixture->Release(v1, 1);
    fixture->Delete(QStringLiteral("v3")); // without the id of its app
    fixture->Load(v2);

    Wait(5);
    std::sort(ofX.heard.begin(), ofX.heard.end());
    QCOMPARE(ofX.heard, (QList<int>{NotifyDeleteAppSnapshotInfo, NotifyGrayOrRelease}));
    QCOMPARE(ofY.heard, QList<int>{NotifyGetDevSnapshotData});
}

void AudienceTest::opensTwoEditorsInTheOrderInWhichTheyWereMade()
{
    Party ofX;
    Party ofY;
    fixture->List(x);
    Wait(1);

    QCOMPARE(ofX.heard.size(), 1);
    QCOMPARE(ofY.heard.size(), 0);
    fixture->List(y);
    Wait(2);
    QCOMPARE(ofX.heard.size(), 1);
    QCOMPARE(ofY.heard.size(), 1);
    fixture->List(x); // is refreshed
    Wait(3);
    QCOMPARE(ofX.heard.size(), 2);
    QCOMPARE(ofY.heard.size(), 1);
}

void AudienceTest::failsAListThatWasOvertakenByAnotherApp()
{
    Party ofX;
    fixture->List(x);
    Party ofY;
    fixture->List(y);

    Wait(2);
    QCOMPARE(ofX.heard, QList<int>{NotifyGetSnapshotList});
    QVERIFY2(ofX.errors.first().contains(QStringLiteral("打开了另一个应用")),
             qUtf8Printable(ofX.errors.first()));
    QCOMPARE(ofY.heard, QList<int>{NotifyGetSnapshotList});
    QCOMPARE(ofY.errors, QStringList(QString()));
}

void AudienceTest::turnsAnEditorToAnotherApp()
{
    Party editor;
    fixture->List(x);
    Wait(1);
    fixture->Release(v1, 1);
    fixture->List(x);

    fixture->List(y);

    Wait(4);
    QCOMPARE(editor.heard, (QList<int>{NotifyGetSnapshotList, NotifyGetSnapshotList}));
    QCOMPARE(editor.errors, (QStringList{QString(), QString()}));
}

void AudienceTest::answersASaveWhateverItsEditorShowsNow()
{
    Party editor;
    fixture->List(x);
    Wait(1);
    fixture->Update(fixture->Record(v1, text1));

    fixture->List(y);

    Wait(3);
    QVERIFY(editor.heard.contains(NotifyUpdateAppSnapshotInfo));
}

void AudienceTest::answersASaveToTheEditorOfItsContentOnly_data()
{
    QTest::addColumn<QString>("version");

    QTest::newRow("into its own app") << v1;
    QTest::newRow("into a row of the other app") << v2;
    QTest::newRow("as a new version") << QString();
}

void AudienceTest::answersASaveToTheEditorOfItsContentOnly()
{
    QFETCH(const QString, version);
    Party ofX;
    fixture->List(x);
    Wait(1);
    Party ofY;
    fixture->List(y);
    Wait(2);
    RpaAppData content;
    content.GetAppExtendInfo()->SetAppId(x);
    const RpaAppSnapshotPtr record = fixture->Record(version, QString::fromUtf8(content.ToJson()));
    record->SetAppId(version == v2 ? y : x);

    version.isEmpty() ? fixture->Save(record) : fixture->Update(record);

    Wait(3);
    const int asked = version.isEmpty() ? NotifySaveAppSnapshotInfo : NotifyUpdateAppSnapshotInfo;
    QCOMPARE(ofX.heard.count(asked), 1);
    QCOMPARE(ofY.heard.count(asked), 0);
}

void AudienceTest::answersASaveOfAnAppThatItsEditorHadBefore()
{
    Party first;
    fixture->List(x);
    Wait(1);
    fixture->List(y);
    Wait(2);
    Party second;
    fixture->List(x);
    Wait(3);
    RpaAppData content;
    content.GetAppExtendInfo()->SetAppId(x);

    fixture->Update(fixture->Record(v1, QString::fromUtf8(content.ToJson())));

    Wait(4);
    QCOMPARE(first.heard.count(NotifyUpdateAppSnapshotInfo), 1);
}

// What it shows is not known before it asked for a list.
void AudienceTest::tellsASaveToAnEditorThatMayShowTheApp()
{
    Party first;
    fixture->List(x);
    Wait(1);
    Party unknown;
    RpaAppData content;
    content.GetAppExtendInfo()->SetAppId(x);

    fixture->Update(fixture->Record(v1, QString::fromUtf8(content.ToJson())));

    Wait(2);
    QCOMPARE(first.heard.count(NotifyUpdateAppSnapshotInfo), 1);
    QCOMPARE(unknown.heard.count(NotifyUpdateAppSnapshotInfo), 1);
}

void AudienceTest::letsALaterDialogHearItsEditorsDeletion()
{
    Party editor;
    fixture->List(x);
    Wait(1);
    fixture->Delete(v1);

    Party dialog(false);

    Wait(2);
    QCOMPARE(dialog.heard, QList<int>{NotifyDeleteAppSnapshotInfo});
}

void AudienceTest::leavesALaterDialogOfAnotherEditorAlone()
{
    auto before = std::make_unique<Party>();
    fixture->List(x);
    Wait(1);
    fixture->Delete(v1);
    before.reset();
    Party editor;
    fixture->List(y);

    Party dialog(false);

    Wait(3);
    QCOMPARE(dialog.heard, QList<int>());
    QCOMPARE(editor.heard, QList<int>{NotifyGetSnapshotList});
}

void AudienceTest::refusesAListOfAnotherApp()
{
    fixture->server.Enqueue(VersionReplies::List({fixture->Version(v1), OfY(v2)}));

    fixture->List(x);

    Wait(1);
    QVERIFY2(fixture->answers.LastError().contains(QStringLiteral("另一个应用的版本，没有采用")),
             qUtf8Printable(fixture->answers.LastError()));
    QCOMPARE(fixture->Logic()->GetDevSnapshotManager()->GetCount(), 0);
    QVERIFY(!fixture->Logic()->GetDevSnapshotManager()->WasListed(v2));
}

void AudienceTest::savesForAnAppThatIsNotShown()
{
    Party ofX;
    fixture->List(x);
    Wait(1);
    Party ofY;
    fixture->List(y);
    Wait(2);
    VersionReplies::Version saved = fixture->Version(v1, 2, text1.toUtf8());
    fixture->server.Enqueue(VersionReplies::Saved(200, saved));

    const RpaAppSnapshotPtr record = fixture->Logic()->GetDevSnapshotManager()->GetSnapshot(v1);
    QVERIFY(record);
    record->SetAppData(text1);
    fixture->Update(record);

    Wait(3);
    QVERIFY2(fixture->answers.LastSucceeded(), qPrintable(fixture->answers.LastError()));
    QCOMPARE(fixture->Logic()->GetDevSnapshotManager()->GetCount(), 1);
    QCOMPARE(fixture->Logic()->GetDevSnapshotManager()->GetSnapshotId(0), v2);
}

void AudienceTest::namesWhatIsUnderWay()
{
    fixture->List(x);
    Wait(1);

    fixture->Release(v1, 2);
    fixture->Delete(QStringLiteral("v3"));

    const QVector<VersionAct> acts = fixture->Logic()->GetActsUnderWay(x);
    QCOMPARE(acts.size(), 2);
    QCOMPARE(acts.first().kind, VersionAct::Kind::Publication);
    QCOMPARE(acts.first().versionName, QStringLiteral("name of v1"));
    QCOMPARE(acts.last().kind, VersionAct::Kind::Deletion);
    QCOMPARE(acts.last().versionId, QStringLiteral("v3"));
    QVERIFY(fixture->Logic()->GetActsUnderWay(y).isEmpty());
    Wait(3);
    QVERIFY(fixture->Logic()->GetActsUnderWay(x).isEmpty());
}

void AudienceTest::tellsOfAFailedSaveWhoseEditorIsGone()
{
    QSignalSpy abandoned(fixture->Logic()->GetSaveLedger(), &SaveLedger::SigAbandonedSaveFailed);
    auto editor = std::make_unique<Party>();
    fixture->List(x);
    Wait(1);
    fixture->Update(fixture->Record(v1, text1, QStringLiteral("甲")));

    editor.reset();
    Party ofY;
    fixture->List(y);

    Wait(3);
    QCOMPARE(abandoned.size(), 1);
    QCOMPARE(abandoned.first(), (QVariantList{x, QStringLiteral("甲"), QStringLiteral("坏了")}));
}

void AudienceTest::tellsOfAFailedSaveWhoseDialogIsGone()
{
    QSignalSpy abandoned(fixture->Logic()->GetSaveLedger(), &SaveLedger::SigAbandonedSaveFailed);
    Party editor;
    fixture->List(x);
    Wait(1);
    auto dialog = std::make_unique<Party>(false);
    const RpaAppSnapshotPtr record =
        fixture->Record(v1, text1, QStringLiteral("乙")); // named, as a dialog does
    fixture->Update(record);

    dialog.reset();

    Wait(2);
    QCOMPARE(abandoned.size(), 1);
    QCOMPARE(abandoned.first().at(1).toString(), QStringLiteral("乙"));
}

void AudienceTest::leavesAFailedSaveToItsEditor()
{
    QSignalSpy abandoned(fixture->Logic()->GetSaveLedger(), &SaveLedger::SigAbandonedSaveFailed);
    Party editor;
    fixture->List(x);
    Wait(1);
    const RpaAppSnapshotPtr record = fixture->Record(v1, text1);
    record->SetNamed(false);

    fixture->Update(record);

    Wait(2);
    QVERIFY(!fixture->answers.LastSucceeded());
    QCOMPARE(abandoned.size(), 0);
}

RPA_TEST_MAIN(AudienceTest)
#include "tst_audience.moc"
