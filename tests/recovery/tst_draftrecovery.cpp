// SPDX-License-Identifier: Apache-2.0

#include "AuthorProcess.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace
{
const QString typed = QStringLiteral("typed before the crash");
const QString typedLater = QStringLiteral("saved by somebody quicker");
} // namespace

// What an author finds after the workstation was killed.
class DraftRecoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void bringsBackWhatWasTypedBeforeACrash();
    void asksAgainWhenTheAuthorDecidesLater();
    void forgetsADraftThatIsDiscarded();
    void keepsADraftAsideWhileNewWorkBegins();
    void neverSavesOverANewerVersion();
    void returnsToTheVersionThatWasEdited();
    void returnsToAnAppThatHasNoVersionYet();
    void forgetsWorkThatWasNotToBeSaved();
    void forgetsWorkThatWasLeftForAnotherVersion();
    void offersNothingAfterASaveWhoseAnswerWasLost();
    void goesOnFromASaveWhoseAnswerWasLostInTheCrash();
    void keepsADamagedDraftAsideAndSaysSo();
    void letsTheAuthorWorkWithoutAFolderForDrafts();

private:
    QDir Folder() const { return QDir(folder->filePath(QStringLiteral("data/drafts"))); }
    QStringList Drafts() const { return Folder().entryList({QStringLiteral("*.draft")}); }
    // The bytes of the only one, as far as they are there.
    QByteArray Draft() const
    {
        QFile file(Folder().filePath(Drafts().value(0)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void UntilDrafts(int count) const { QTRY_COMPARE_WITH_TIMEOUT(Drafts().size(), count, 10000); }
    // Where the instructions of the app are to be seen.
    static void Enter(AuthorProcess& author);
    void TypeAndCrash(const QString& text) const;

    std::unique_ptr<TestFolder> folder;
};

void DraftRecoveryTest::init()
{
    folder = std::make_unique<TestFolder>();
    QVERIFY(folder->isValid());
}

void DraftRecoveryTest::Enter(AuthorProcess& author)
{
    author.Do(QStringLiteral("click pushButtonExtend"));
}

void DraftRecoveryTest::TypeAndCrash(const QString& text) const
{
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));
    Enter(author);
    author.Do(QStringLiteral("type ") + text);
    UntilDrafts(1);
    author.Kill();
}

void DraftRecoveryTest::bringsBackWhatWasTypedBeforeACrash()
{
    // given
    TypeAndCrash(typed);

    // when the app is opened again
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));

    // then the work is offered, and comes back
    QVERIFY(author.Do(QStringLiteral("read labelCaption")).contains(QStringLiteral("草稿")));
    QVERIFY(!author.Do(QStringLiteral("read labelTime")).isEmpty());
    QCOMPARE(author.Do(QStringLiteral("read labelVersion")), QStringLiteral("开发版一（修订 1）"));
    author.Do(QStringLiteral("click buttonRestore"));
    Enter(author);
    const QString text = author.Do(QStringLiteral("instructions"));
    QVERIFY2(text.contains(typed), qPrintable(text));
    QCOMPARE(Drafts().size(), 1);

    // and leaving asks about it, as about any unsaved work
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("answer 取消"));

    // and once it is saved there is nothing to offer any more
    author.Do(QStringLiteral("click pushButtonSave"));
    UntilDrafts(0);
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("open 库存预警示例"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
}

void DraftRecoveryTest::asksAgainWhenTheAuthorDecidesLater()
{
    // given
    TypeAndCrash(typed);
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());

    // when
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonLater"));

    // then the app shows what the server has, and the draft is offered the next time
    Enter(author);
    QVERIFY(!author.Do(QStringLiteral("instructions")).contains(typed));
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("read labelCaption"));
    QCOMPARE(Drafts().size(), 1);
}

void DraftRecoveryTest::forgetsADraftThatIsDiscarded()
{
    // given
    TypeAndCrash(typed);
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));

    // when the author thinks twice
    author.Do(QStringLiteral("click buttonDiscard"));
    author.Do(QStringLiteral("answer 否"));
    author.Do(QStringLiteral("read labelOutlook"));
    QCOMPARE(Drafts().size(), 1);
    author.Do(QStringLiteral("click buttonDiscard"));
    author.Do(QStringLiteral("answer 丢弃"));

    // then
    UntilDrafts(0);
    Enter(author);
    QVERIFY(!author.Do(QStringLiteral("instructions")).contains(typed));
}

void DraftRecoveryTest::keepsADraftAsideWhileNewWorkBegins()
{
    // given a draft that the author has not decided about
    TypeAndCrash(typed);
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonLater"));
    Enter(author);

    // when the same version is edited and saved
    author.Do(QStringLiteral("type ") + typedLater);
    UntilDrafts(2);
    author.Do(QStringLiteral("click pushButtonSave"));

    // then only the draft of what was saved goes
    UntilDrafts(1);
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonRestore"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
}

void DraftRecoveryTest::neverSavesOverANewerVersion()
{
    // given a draft, and a version that was saved since
    TypeAndCrash(typed);
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonLater"));
    Enter(author);
    author.Do(QStringLiteral("type ") + typedLater);
    author.Do(QStringLiteral("click pushButtonSave"));
    author.Do(QStringLiteral("sees 保存成功"));
    UntilDrafts(1);
    author.Do(QStringLiteral("click buttonBack"));

    // when the draft is restored and saved
    author.Do(QStringLiteral("open 库存预警示例"));
    const QString outlook = author.Do(QStringLiteral("read labelOutlook"));
    QVERIFY2(outlook.contains(QStringLiteral("（修订 2）比草稿所基于的（修订 1）新")), qPrintable(outlook));
    author.Do(QStringLiteral("click buttonRestore"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
    author.Do(QStringLiteral("click pushButtonSave"));

    // then the save is refused, the server keeps what it has, and so does the journal
    author.Do(QStringLiteral("sees 请另存为新版本"));
    QCOMPARE(Drafts().size(), 1);
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonLater"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typedLater));
    author.Do(QStringLiteral("click buttonBack"));

    // and as a new version it is taken
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonRestore"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
    author.Do(QStringLiteral("click pushButtonSaveAs"));
    author.Do(QStringLiteral("fill comboBoxName rescued"));
    author.Do(QStringLiteral("click pushButtonOK"));
    author.Do(QStringLiteral("gone comboBoxName"));
    UntilDrafts(0);
    QCOMPARE(author.Do(QStringLiteral("read version_combo")), QStringLiteral("rescued"));
}

void DraftRecoveryTest::returnsToTheVersionThatWasEdited()
{
    // given work on a version that is not the first of the list
    QString version;
    {
        AuthorProcess author(folder->path());
        QVERIFY(author.Start());
        author.Do(QStringLiteral("open 发票汇总示例"));
        version = author.Do(QStringLiteral("read version_combo"));
        author.Do(QStringLiteral("switch 开发版二"));
        author.Do(QStringLiteral("until version_combo 开发版二"));
        Enter(author);
        author.Do(QStringLiteral("type ") + typed);
        UntilDrafts(1);
        author.Kill();
    }
    QVERIFY(version != QStringLiteral("开发版二"));

    // when
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 发票汇总示例"));
    author.Do(QStringLiteral("click buttonRestore"));

    // then
    author.Do(QStringLiteral("until version_combo 开发版二"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
    author.Do(QStringLiteral("click pushButtonSave"));
    UntilDrafts(0);
}

void DraftRecoveryTest::returnsToAnAppThatHasNoVersionYet()
{
    // given a new app that was never saved
    {
        AuthorProcess author(folder->path());
        QVERIFY(author.Start());
        author.Do(QStringLiteral("click buttonNewVisual"));
        author.Do(QStringLiteral("fill editAppName brand new"));
        author.Do(QStringLiteral("click buttonOk"));
        author.Do(QStringLiteral("gone editAppName"));
        author.Do(QStringLiteral("dismiss")); // the question for a template
        Enter(author);
        author.Do(QStringLiteral("type ") + typed);
        UntilDrafts(1);
        author.Kill();
    }

    // when
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open brand new"));
    QCOMPARE(author.Do(QStringLiteral("read labelVersion")), QStringLiteral("尚未保存过的版本"));
    author.Do(QStringLiteral("click buttonRestore"));

    // then it goes on without a question for a template, and the first save makes a version of it
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
    author.Do(QStringLiteral("click pushButtonSave"));
    UntilDrafts(0);

    // and what is typed then belongs to that version
    author.Do(QStringLiteral("type ") + typedLater);
    UntilDrafts(1);
    author.Kill();
    AuthorProcess next(folder->path());
    QVERIFY(next.Start());
    next.Do(QStringLiteral("open brand new"));
    QCOMPARE(next.Do(QStringLiteral("read labelVersion")), QStringLiteral("版本1（修订 1）"));
}

void DraftRecoveryTest::forgetsWorkThatWasNotToBeSaved()
{
    // given
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));
    Enter(author);
    author.Do(QStringLiteral("type ") + typed);
    UntilDrafts(1);

    // when
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("answer 否"));

    // then
    UntilDrafts(0);
    author.Do(QStringLiteral("open 库存预警示例"));
    Enter(author);
    QVERIFY(!author.Do(QStringLiteral("instructions")).contains(typed));
}

void DraftRecoveryTest::forgetsWorkThatWasLeftForAnotherVersion()
{
    // given
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 发票汇总示例"));
    Enter(author);
    author.Do(QStringLiteral("type ") + typed);
    UntilDrafts(1);

    // when
    author.Do(QStringLiteral("switch 开发版二"));
    author.Do(QStringLiteral("answer 否"));

    // then
    author.Do(QStringLiteral("until version_combo 开发版二"));
    UntilDrafts(0);
}

void DraftRecoveryTest::offersNothingAfterASaveWhoseAnswerWasLost()
{
    // given a draft of work that the server has
    TypeAndCrash(typed);
    const QString draft = Folder().filePath(Drafts().value(0));
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));
    author.Do(QStringLiteral("click buttonRestore"));
    Enter(author);
    author.Do(QStringLiteral("instructions"));
    QVERIFY(QFile::copy(draft, draft + QStringLiteral(".copy")));
    author.Do(QStringLiteral("click pushButtonSave"));
    UntilDrafts(0);
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("gone pushButtonSave"));
    QVERIFY(QFile::rename(draft + QStringLiteral(".copy"), draft));

    // when
    author.Do(QStringLiteral("open 库存预警示例"));

    // then
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typed));
    UntilDrafts(0);
}

void DraftRecoveryTest::goesOnFromASaveWhoseAnswerWasLostInTheCrash()
{
    // given a save that the server has done and not answered, and what was typed since
    const QString hold = folder->filePath(QStringLiteral("data/server/hold-answer"));
    {
        AuthorProcess author(folder->path(), QStringLiteral(MORTAL_SERVER));
        QVERIFY(author.Start());
        author.Do(QStringLiteral("open 库存预警示例"));
        Enter(author);
        author.Do(QStringLiteral("type ") + typed);
        UntilDrafts(1);
        QVERIFY(QFile(hold).open(QIODevice::WriteOnly));
        QTRY_VERIFY(!QFile::exists(hold));
        author.Do(QStringLiteral("click pushButtonSave"));
        QTRY_VERIFY(QFile::exists(folder->filePath(QStringLiteral("data/server/answer-held"))));
        author.Do(QStringLiteral("type ") + typedLater);
        QTRY_VERIFY(Draft().contains(typedLater.toUtf8()));
        author.Kill();
    }

    // when the work is restored
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());
    author.Do(QStringLiteral("open 库存预警示例"));

    // then it goes on from what was saved, and nobody else is blamed
    QCOMPARE(author.Do(QStringLiteral("read labelVersion")), QStringLiteral("开发版一（修订 2）"));
    const QString outlook = author.Do(QStringLiteral("read labelOutlook"));
    QVERIFY2(outlook.contains(QStringLiteral("保存后才写入该版本")), qPrintable(outlook));
    author.Do(QStringLiteral("click buttonRestore"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typedLater));
    author.Do(QStringLiteral("click pushButtonSave"));
    UntilDrafts(0);
    author.Do(QStringLiteral("click buttonBack"));
    author.Do(QStringLiteral("open 库存预警示例"));
    Enter(author);
    QVERIFY(author.Do(QStringLiteral("instructions")).contains(typedLater));
}

void DraftRecoveryTest::keepsADamagedDraftAsideAndSaysSo()
{
    // given
    TypeAndCrash(typed);
    QFile draft(Folder().filePath(Drafts().value(0)));
    QVERIFY(draft.open(QIODevice::ReadWrite));
    QVERIFY(draft.resize(draft.size() / 2));
    draft.close();
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());

    // when
    author.Do(QStringLiteral("open 库存预警示例"));

    // then
    author.Do(QStringLiteral("sees 有一份草稿无法使用"));
    Enter(author);
    QVERIFY(!author.Do(QStringLiteral("instructions")).isEmpty());
    QCOMPARE(Drafts().size(), 0);
    QCOMPARE(Folder().entryList({QStringLiteral("*.kept1")}).size(), 1);
}

void DraftRecoveryTest::letsTheAuthorWorkWithoutAFolderForDrafts()
{
    // given a file where the folder would be
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("data")));
    QFile obstacle(folder->filePath(QStringLiteral("data/drafts")));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    AuthorProcess author(folder->path());
    QVERIFY(author.Start());

    // then there is a notice, and everything else works
    author.Do(QStringLiteral("sees 未保存的修改暂时无法保留草稿"));
    author.Do(QStringLiteral("open 库存预警示例"));
    Enter(author);
    author.Do(QStringLiteral("type ") + typed);
    author.Do(QStringLiteral("click pushButtonSave"));
    author.Do(QStringLiteral("sees 保存成功"));
}

QTEST_GUILESS_MAIN(DraftRecoveryTest)
#include "tst_draftrecovery.moc"
