// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <WbHttpModule/WbHttpAnswer.h>

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <optional>

// Of a request that brings nothing but its outcome.
struct VersionServiceNothing
{
    static std::optional<VersionServiceNothing> Read(const QJsonObject&) { return VersionServiceNothing(); }
};

// What the answers of the version service are read with. Nothing in them is believed: a record that misses a field
// or has one out of range makes the whole answer unusable. Any thread.
namespace ServiceAnswers
{
// Empty when the answer is no JSON object.
RPASERVICECLIENT_EXPORT QJsonObject ObjectOf(const WbHttpAnswer& answer);
// Empty when there is no such text.
RPASERVICECLIENT_EXPORT QString Text(const QJsonObject& json, const char* name);
// UTC, from milliseconds since the epoch.
RPASERVICECLIENT_EXPORT QDateTime Time(const QJsonObject& json, const char* name);
// Nothing unless it is a whole number within both bounds.
RPASERVICECLIENT_EXPORT std::optional<int> IntMember(const QJsonObject& json, const char* name, int least,
                                                     int most);
// Words of the server as a notice can hold them: one line of plain text, cut.
RPASERVICECLIENT_EXPORT QString Presentable(const QString& message);

// Revision of an ETag ("7" in quotes); 0 when it is none.
RPASERVICECLIENT_EXPORT int RevisionOf(const WbHttpAnswer& answer);

// Stable name of a refusal ("name-taken"); empty when the answer is none of the service's.
RPASERVICECLIENT_EXPORT QString RefusalCode(const WbHttpAnswer& answer);
// Why the request failed, in the author's words; never empty.
RPASERVICECLIENT_EXPORT QString FailureText(const WbHttpAnswer& answer);
// For an answer that came through but cannot be used.
RPASERVICECLIENT_EXPORT QString UnusableText();

// The one record that the answer is.
template <typename Record>
void Read(const WbHttpAnswer& answer, std::optional<Record>& read)
{
    read = Record::Read(ObjectOf(answer));
}

// The list that the answer has under the records' name; none when it holds a record that is none.
template <typename Record>
void Read(const WbHttpAnswer& answer, std::optional<QVector<Record>>& read)
{
    const QJsonValue list = ObjectOf(answer).value(QLatin1String(Record::listName));
    if (!list.isArray())
        return;
    QVector<Record> records;
    for (const QJsonValue entry : list.toArray()) {
        const auto record = Record::Read(entry.toObject());
        if (!record)
            return;
        records.append(*record);
    }
    read = records;
}

// The answer read as what it is; nothing when it cannot be used.
template <typename Answer>
std::optional<Answer> ReadAs(const WbHttpAnswer& answer)
{
    std::optional<Answer> read;
    Read(answer, read);
    return read;
}

// How the answer of a request is read: by its own Read() where it has one, else by what it is.
template <typename Request>
constexpr auto ReaderOf(int) -> decltype(&Request::Read)
{
    return &Request::Read;
}
template <typename Request>
constexpr auto ReaderOf(long)
{
    return &ReadAs<typename Request::Answer>;
}
} // namespace ServiceAnswers
