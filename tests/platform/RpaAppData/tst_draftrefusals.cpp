// Work that the journal cannot keep: the author is told once, and what was kept before stays.
#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaDraftJournal.h>
#include <WbFoundation/ContentLimits.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
const QString account = QStringLiteral("作者");
const QString appId = QStringLiteral("app-1");

// As an editor makes it: loaded content of a version.
RpaAppDataPtr Loaded()
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->SetAppId(appId);
    const RpaContentSource source({QStringLiteral("version-1"), 3, QString()});
    auto app = RpaAppDataPtr::create();
    app->Parse(content.ToJson());
    return app;
}

void Edit(RpaAppData& app, const QString& text)
{
    app.GetAppExtendInfo()->manual = text;
    app.SetModified(true);
}
} // namespace

class DraftRefusalTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tellsAgainWhenTheDiskRefusesAgain();
    void keepsTheLastDraftThatFitsWhenATextBecomesTooLong();
    void tellsOnceThatATextIsTooLongUntilItFitsAgain();

private:
    QStringList Names() const { return QDir(path).entryList({QStringLiteral("*.draft")}); }
    // A folder where the unfinished draft would be.
    QString Obstacle() const { return path + QLatin1Char('/') + Names().value(0) + QStringLiteral(".tmp"); }
    void PutObstacle() const { QVERIFY(QDir().mkpath(Obstacle() + QStringLiteral("/inside"))); }
    RpaDraft Only();
    QVector<RpaDraft> All(QStringList* refusals = nullptr);

    std::unique_ptr<QTemporaryDir> folder;
    QString path;
    std::unique_ptr<RpaDraftJournal> journal;
};

void DraftRefusalTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    path = folder->filePath(QStringLiteral("drafts"));
    journal = std::make_unique<RpaDraftJournal>();
    journal->SetDelay(std::chrono::milliseconds(20));
    QString problem;
    QVERIFY2(journal->Start(path, &problem), qPrintable(problem));
    journal->Open(account, appId);
}

void DraftRefusalTest::cleanup()
{
    journal.reset();
}

QVector<RpaDraft> DraftRefusalTest::All(QStringList* refusals)
{
    bool answered = false;
    QVector<RpaDraft> found;
    journal->Finish();
    journal->Read(account, appId, this, [&](const QVector<RpaDraft>& drafts, const QStringList& refused) {
        answered = true;
        found = drafts;
        if (refusals)
            *refusals = refused;
    });
    return QTest::qWaitFor([&] { return answered; }) ? found : QVector<RpaDraft>();
}

RpaDraft DraftRefusalTest::Only()
{
    const QVector<RpaDraft> drafts = All();
    if (drafts.size() != 1)
        QTest::qFail(qPrintable(QStringLiteral("%1 drafts").arg(drafts.size())), __FILE__, __LINE__);
    return drafts.value(0);
}

// A disk that was full at noon and is full again in the evening is news.
void DraftRefusalTest::tellsAgainWhenTheDiskRefusesAgain()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(written.size(), 1);
    for (int outage = 1; outage <= 2; ++outage) {
        PutObstacle();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
        Edit(*app, QStringLiteral("b%1").arg(outage));
        QTRY_COMPARE(failed.size(), outage);

        QVERIFY(QDir(Obstacle()).removeRecursively());
        Edit(*app, QStringLiteral("c%1").arg(outage));
        QTRY_COMPARE(written.size(), 1 + outage);
    }
}

void DraftRefusalTest::keepsTheLastDraftThatFitsWhenATextBecomesTooLong()
{
    // given a draft
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy tooLarge(journal.get(), &RpaDraftJournal::SigTooLarge);
    Edit(*app, QStringLiteral("fits"));
    QTRY_COMPARE(written.size(), 1);

    // when the text grows beyond what can be read back
    QTest::ignoreMessage(QtWarningMsg, "not kept: 使用说明超过 16 MB");
    Edit(*app, QString(ContentLimits::textBytes + 1, QLatin1Char('x')));

    // then the author hears which text it is, and the draft still holds what fitted
    QTRY_COMPARE(tooLarge.size(), 1);
    QCOMPARE(tooLarge.first().first().toString(), QStringLiteral("使用说明超过 16 MB"));
    QStringList refusals;
    const QVector<RpaDraft> drafts = All(&refusals);
    QCOMPARE(refusals, QStringList());
    QCOMPARE(drafts.size(), 1);
    QVERIFY(drafts.first().content.contains("\"fits\""));
    QCOMPARE(written.size(), 1);
}

void DraftRefusalTest::tellsOnceThatATextIsTooLongUntilItFitsAgain()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy tooLarge(journal.get(), &RpaDraftJournal::SigTooLarge);
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    const QString tooLong(ContentLimits::textBytes + 1, QLatin1Char('x'));

    for (int write = 1; write <= 3; ++write)
        QTest::ignoreMessage(QtWarningMsg, "not kept: 使用说明超过 16 MB");
    Edit(*app, tooLong);
    QTRY_COMPARE(tooLarge.size(), 1);
    Edit(*app, tooLong + QLatin1Char('y'));
    journal->Close();
    journal->Finish();
    QCOMPARE(tooLarge.size(), 1);

    journal->Open(account, appId);
    Edit(*app, QStringLiteral("fits"));
    QTRY_COMPARE(written.size(), 1);
    QCOMPARE(Only().content, app->ToJson());
    Edit(*app, tooLong);
    QTRY_COMPARE(tooLarge.size(), 2);
    QCOMPARE(failed.size(), 0);
}

QTEST_GUILESS_MAIN(DraftRefusalTest)
#include "tst_draftrefusals.moc"
