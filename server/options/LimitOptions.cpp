// SPDX-License-Identifier: Apache-2.0

#include "LimitOptions.h"

#include <functional>
#include <vector>

namespace server
{
namespace
{
constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 largestBodyMegabytes = 64; // less would keep a large app from being saved at all

struct Limit
{
    const char* name;
    const char* meaning;
    qint64 usual;
    qint64 least;
    qint64 most;
    std::function<void(Options&, qint64)> set;
};

const std::vector<Limit>& Limits()
{
    static const std::vector<Limit> limits{
        {"connections", "Connections at once.", 2000, 1, 100000,
         [](Options& to, qint64 value) { to.http.connections = static_cast<int>(value); }},
        {"connections-per-address", "Connections at once from one address.", 256, 1, 100000,
         [](Options& to, qint64 value) { to.http.connectionsPerAddress = static_cast<int>(value); }},
        {"body-memory", "Megabytes that larger requests and answers may take together.", 1024,
         2 * largestBodyMegabytes, 1024 * 1024,
         [](Options& to, qint64 value) { to.http.bodyBytesInFlight = value * megabyte; }},
        {"body-memory-per-account", "Megabytes of them for one account.", 256, largestBodyMegabytes,
         1024 * 1024, [](Options& to, qint64 value) { to.http.bodyBytesPerAccount = value * megabyte; }},
        {"body-memory-per-address", "Megabytes of them for one address.", 512, largestBodyMegabytes,
         1024 * 1024, [](Options& to, qint64 value) { to.http.bodyBytesPerAddress = value * megabyte; }},
        {"stall", "Seconds without a byte after which a body is dropped.", 10, 1, 3600,
         [](Options& to, qint64 value) { to.http.stall = std::chrono::seconds(value); }},
        {"login-tries", "Sign-ins a minute to one account from one address; 0: no limit.", 5, 0, 1000000,
         [](Options& to, qint64 value) { to.login.perAccountAndAddress = static_cast<int>(value); }},
        {"login-tries-per-address", "Sign-ins a minute from one address; 0: no limit.", 30, 0, 1000000,
         [](Options& to, qint64 value) { to.login.perAddress = static_cast<int>(value); }},
        {"login-tries-per-account",
         "Sign-ins a minute to one account from addresses that have not signed in to it; 0: no limit.", 50, 0,
         1000000, [](Options& to, qint64 value) { to.login.perAccount = static_cast<int>(value); }}};
    return limits;
}
} // namespace

QList<QCommandLineOption> LimitOptions()
{
    QList<QCommandLineOption> options;
    for (const Limit& limit : Limits())
        options.append(QCommandLineOption(QLatin1String(limit.name), QLatin1String(limit.meaning),
                                          QStringLiteral("number"), QString::number(limit.usual)));
    return options;
}

QString ReadLimits(const QCommandLineParser& line, Options& options)
{
    for (const Limit& limit : Limits()) {
        bool isNumber = false;
        const qint64 value = line.value(QLatin1String(limit.name)).toLongLong(&isNumber);
        if (!isNumber || value < limit.least || value > limit.most)
            return QStringLiteral("--%1 takes a number from %2 to %3")
                .arg(QLatin1String(limit.name))
                .arg(limit.least)
                .arg(limit.most);
        limit.set(options, value);
    }
    return {};
}
} // namespace server
