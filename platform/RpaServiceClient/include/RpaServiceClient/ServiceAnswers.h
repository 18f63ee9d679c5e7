// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>
#include <WbHttpModule/WbHttpAnswer.h>

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

// Of a request that brings nothing but its outcome.
struct VersionServiceNothing
{
};

// What the answers of the version service are read with. Nothing in them is believed: a record that misses a field
// or has one out of range makes the whole answer unusable. Any thread.
namespace ServiceAnswers
{
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

inline std::optional<VersionServiceNothing> ReadNothing(const WbHttpAnswer&)
{
    return VersionServiceNothing();
}

// The one record that the answer is.
template <typename Record>
std::optional<Record> ReadRecord(const WbHttpAnswer& answer)
{
    return Record::Read(ObjectOf(answer));
}

// The list that the answer has under the name; none when it holds a record that is none.
template <typename Records>
std::optional<Records> ReadList(const WbHttpAnswer& answer, const char* name)
{
    const QJsonValue list = ObjectOf(answer).value(QLatin1String(name));
    if (!list.isArray())
        return std::nullopt;
    Records records;
    for (const QJsonValue& entry : list.toArray()) {
        const auto record = Records::value_type::Read(entry.toObject());
        if (!record)
            return std::nullopt;
        records.append(*record);
    }
    return records;
}
} // namespace ServiceAnswers
