// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PostgresProcess.h"
#include "TestFolder.h"
#include "rules/ReleaseRules.h"
#include "sql/Dialect.h"

#include <QObject>

#include <memory>
#include <optional>
#include <variant>

// What a rule ends with: a record or a refusal.
template <typename Record>
using Outcome = std::variant<Record, server::Refusal>;

// The same tests on both databases; each on a database of its own, with four accounts and an app of "author".
class StoreFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { postgres.reset(); }
    void init();
    void cleanup();

protected:
    static const server::Account author;
    static const server::Account colleague; // of the same vender
    static const server::Account foreigner; // of another one
    static const server::Account administrator;

    static constexpr qint64 dayMs = 24LL * 60 * 60 * 1000;

    static server::VersionDraft DraftOf(const QString& name, const QByteArray& body);

    // The column "database" with a row for each.
    static void Databases();

    void OpenFresh();
    std::shared_ptr<const server::IDialect> Dialect() const;
    server::Version Save(const QString& name, const QByteArray& body);
    server::Version Released(const QString& name, server::ReleaseType type, qint64 now);

    template <typename Rule>
    static auto OutcomeOf(const Rule& rule) -> Outcome<decltype(rule())>
    {
        try {
            return rule();
        } catch (const server::Refusal& refusal) {
            return refusal;
        }
    }

    // Runs a rule in a write and gives its outcome.
    template <typename Rule>
    auto InWrite(const Rule& rule)
    {
        std::optional<Outcome<decltype(rule(std::declval<server::Transaction&>()))>> outcome;
        store->SubmitAndWait([&](server::Transaction& t) { outcome = OutcomeOf([&] { return rule(t); }); });
        return *outcome;
    }

    std::unique_ptr<PostgresProcess> postgres;
    std::unique_ptr<TestFolder> folder;
    QString address;
    std::unique_ptr<server::Store> store;
    server::App app;
};
