// SPDX-License-Identifier: Apache-2.0

#include "DraftJournalFixture.h"

#include "TestFolder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QtTest>

const QString DraftJournalFixture::account = QStringLiteral("作者");
const QString DraftJournalFixture::appId = QStringLiteral("app-1");
const QString DraftJournalFixture::versionId = QStringLiteral("version-1");

void DraftJournalFixture::init()
{
    folder = std::make_unique<TestFolder>();
    path = folder->filePath(QStringLiteral("drafts"));
    journal = std::make_unique<RpaDraftJournal>();
    journal->SetDelay(std::chrono::milliseconds(20));
    QString problem;
    QVERIFY2(journal->Start(path, &problem), qPrintable(problem));
    journal->Open(account, appId);
}

void DraftJournalFixture::cleanup()
{
    journal.reset();
}

RpaAppDataPtr DraftJournalFixture::Loaded(const QString& version, int revision)
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->SetAppId(appId);
    const RpaContentDelivery delivery(content.ToJson(), {version, revision, QString()});
    auto app = RpaAppDataPtr::create();
    app->Parse(delivery.GetContent());
    return app;
}

void DraftJournalFixture::Edit(RpaAppData& app, const QString& text)
{
    app.GetAppExtendInfo()->manual = text;
    app.SetModified(true);
}

QByteArray DraftJournalFixture::Send(RpaAppData& app)
{
    app.CheckPackageInfo();
    app.SetModified(false);
    app.SetVersion(QStringLiteral("1.0.0"));
    return app.ToJson();
}

QByteArray DraftJournalFixture::Sha256(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QStringList DraftJournalFixture::Names() const
{
    return QDir(path).entryList({QStringLiteral("*.draft")}, QDir::Files);
}

RpaDraft DraftJournalFixture::Only()
{
    const QVector<RpaDraft> drafts = All();
    if (drafts.size() != 1)
        QTest::qFail(qPrintable(QStringLiteral("%1 drafts").arg(drafts.size())), __FILE__, __LINE__);
    return drafts.value(0);
}

QVector<RpaDraft> DraftJournalFixture::All(QStringList* refusals)
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

QString DraftJournalFixture::Obstacle() const
{
    return path + QLatin1Char('/') + Names().value(0) + QStringLiteral(".tmp");
}

void DraftJournalFixture::PutObstacle() const
{
    QVERIFY(QDir().mkpath(Obstacle() + QStringLiteral("/inside")));
}
