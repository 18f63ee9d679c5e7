// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"

#include "TestFolder.h"
#include "base/Clock.h"
#include "base/Digest.h"

#include <QTest>

#include <sodium.h>

using namespace server;

const Account StoreFixture::author{
    QStringLiteral("author-1"), QStringLiteral("作者一"), QStringLiteral("v"), {QStringLiteral("author")}};
const Account StoreFixture::colleague{
    QStringLiteral("author-2"), QStringLiteral("作者二"), QStringLiteral("v"), {QStringLiteral("author")}};
const Account StoreFixture::foreigner{
    QStringLiteral("author-3"), QStringLiteral("作者三"), QStringLiteral("w"), {QStringLiteral("author")}};
const Account StoreFixture::administrator{QStringLiteral("admin"),
                                          QStringLiteral("管理员"),
                                          QStringLiteral("v"),
                                          {QStringLiteral("administrator")}};

VersionDraft StoreFixture::DraftOf(const QString& name, const QByteArray& body)
{
    return {name, QStringLiteral("描述"), QStringLiteral("1.2"), Sha256(body), body};
}

void StoreFixture::initTestCase()
{
    QVERIFY(sodium_init() >= 0);
    if (PostgresProcess::IsOffered()) {
        postgres = std::make_unique<PostgresProcess>();
        QVERIFY2(postgres->Start(), postgres->ErrorText().constData());
    }
}

void StoreFixture::Databases()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("sqlite") << QStringLiteral("sqlite");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

void StoreFixture::init()
{
    folder = std::make_unique<TestFolder>();
    QFETCH(QString, database);
    if (database == QLatin1String("postgresql")) {
        if (!PostgresProcess::IsOffered())
            QSKIP("this system has no PostgreSQL to offer");
        address = postgres->NewDatabase();
    } else {
        address = QStringLiteral("sqlite:") + folder->filePath(QStringLiteral("versions.db"));
    }
    OpenFresh();
    store->SubmitAndWait([](Transaction& transaction) {
        for (const Account& account : {author, colleague, foreigner, administrator})
            transaction.UpsertAccount(account, {}, NowMs());
    });
    const auto created =
        InWrite([](Transaction& t) { return rules::CreateApp(t, author, QStringLiteral("应用"), 0, 1); });
    app = std::get<App>(created);
}

void StoreFixture::OpenFresh()
{
    store.reset();
    store = OpenStore(address);
}

void StoreFixture::cleanup()
{
    store.reset();
}

std::shared_ptr<const IDialect> StoreFixture::Dialect() const
{
    return address.startsWith(QLatin1String("sqlite:")) ? MakeSqliteDialect(address.mid(7))
                                                        : MakePostgresDialect(address);
}

Version StoreFixture::Save(const QString& name, const QByteArray& body)
{
    const auto saved = InWrite([&](Transaction& t) {
        return rules::CreateVersion(t, author, app.id, DraftOf(name, body), NowMs());
    });
    return std::get<Version>(saved);
}

Version StoreFixture::Released(const QString& name, ReleaseType type, qint64 now)
{
    const Version version = Save(name, "{}");
    const auto released =
        InWrite([&](Transaction& t) { return rules::ReleaseVersion(t, author, version.id, 1, type, now); });
    return std::get<ReleaseResult>(released).version;
}
