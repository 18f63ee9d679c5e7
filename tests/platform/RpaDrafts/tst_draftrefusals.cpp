// SPDX-License-Identifier: Apache-2.0

// Work that the journal cannot keep: the author is told once, and what was kept before stays.
#include "DraftJournalFixture.h"

#include <WbFoundation/ContentLimits.h>

#include <QDir>
#include <QtTest>

class DraftRefusalTest : public DraftJournalFixture
{
    Q_OBJECT

private slots:
    void tellsOnceThatTheDiskRefuses();
    void writesAgainWhenTheDiskDoes();
    void tellsAgainWhenTheDiskRefusesAgain();
    void keepsTheLastDraftThatFitsWhenATextBecomesTooLong();
    void tellsOnceThatATextIsTooLongUntilItFitsAgain();
};

void DraftRefusalTest::tellsOnceThatTheDiskRefuses()
{
    // given a draft that cannot be replaced
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    PutObstacle();
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);

    // when it is written twice
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
    Edit(*app, QStringLiteral("b"));
    QTRY_COMPARE(failed.size(), 1);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
    Edit(*app, QStringLiteral("c"));
    app.reset();
    journal->Finish();

    // then the user is told once, and the old draft is still there
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.first().first().toString().contains(QDir::toNativeSeparators(path)));
    QVERIFY(Only().content.contains("\"a\""));
}

void DraftRefusalTest::writesAgainWhenTheDiskDoes()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    PutObstacle();
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
    Edit(*app, QStringLiteral("b"));
    QTRY_COMPARE(failed.size(), 1);

    QVERIFY(QDir(Obstacle()).removeRecursively());
    journal->Close();

    QCOMPARE(Only().content, app->ToJson());
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
