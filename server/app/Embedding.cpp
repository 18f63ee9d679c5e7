// SPDX-License-Identifier: Apache-2.0

#include "Embedding.h"

#include "../base/Clock.h"
#include "../base/Ids.h"
#include "../options/StandardInput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <thread>

namespace server
{
namespace
{
constexpr std::size_t longestLine = 1024 * 1024;
constexpr int shortestToken = 32;

struct Entry
{
    QByteArray token;
    Account account;
};

bool ReadEntry(const QJsonObject& object, std::vector<Entry>& entries)
{
    const QJsonObject account = object.value(QLatin1String("account")).toObject();
    Entry entry;
    entry.token = object.value(QLatin1String("token")).toString().toLatin1();
    entry.account.pin = account.value(QLatin1String("pin")).toString();
    entry.account.name = account.value(QLatin1String("name")).toString();
    entry.account.venderId = account.value(QLatin1String("venderId")).toString();
    for (const auto& role : account.value(QLatin1String("roles")).toArray())
        entry.account.roles << role.toString();
    entries.push_back(entry);
    return entry.token.size() >= shortestToken && IsId(entry.account.pin) && IsId(entry.account.venderId);
}

bool ReadEntries(const std::string& line, std::vector<Entry>& entries)
{
    const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
    bool good = ReadEntry(object, entries);
    for (const auto& other : object.value(QLatin1String("others")).toArray())
        good = ReadEntry(other.toObject(), entries) && good;
    return good;
}
} // namespace

std::string ReadInputLine()
{
    std::string line;
    char c = 0;
    while (line.size() < longestLine && ReadStandardInput(&c, 1) == 1) {
        if (c == '\n')
            return line;
        line += c;
    }
    return {};
}

bool AdmitWorkstation(const std::string& line, Store& store, Sessions& sessions)
{
    std::vector<Entry> entries;
    if (!ReadEntries(line, entries))
        return false;
    store.SubmitAndWait([&entries](Transaction& transaction) {
        for (const Entry& entry : entries)
            transaction.UpsertAccount(entry.account, {}, NowMs());
    });
    for (const Entry& entry : entries)
        sessions.AddForThisProcess(entry.token, entry.account);
    return true;
}

void OnInputEnd(std::function<void()> act)
{
    // Detached: a thread that waits for input cannot be called back, and the process may end before its input
    // does.
    std::thread([act = std::move(act)] {
        char ignored[256];
        while (ReadStandardInput(ignored, sizeof ignored) > 0) {
        }
        act();
    }).detach();
}
} // namespace server
