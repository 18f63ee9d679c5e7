// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/JsonText.h"
#include "../http/Request.h"
#include "../rules/Refusal.h"
#include "../store/Records.h"

#include <QJsonObject>

namespace server::wire
{
// Body limit of the requests that carry a small JSON object or nothing.
constexpr qint64 smallBody = 64 * 1024;

// The records as JSON values of the protocol.
JsonText& Append(JsonText& text, const Account& account);
JsonText& Append(JsonText& text, const App& app);
JsonText& Append(JsonText& text, const Version& version);
JsonText& Append(JsonText& text, const SavedRevision& save);
JsonText& Append(JsonText& text, const ReleasedApp& released);
JsonText& Append(JsonText& text, const Invitation& invitation);
JsonText& Append(JsonText& text, const AuditEntry& entry);

template <typename Record>
Response Answer(int status, const Record& record)
{
    JsonText text;
    return Response::Json(status, Append(text, record).Take());
}

Response VersionAnswer(int status, const Version& version); // with its ETag
Response Refused(const Refusal& refusal);

// {name: [...]} with what `write` appends for each record.
template <typename Records, typename Write>
Response ListAnswer(const char* name, const Records& records, const Write& write)
{
    JsonText text;
    text.BeginObject().Key(name).BeginArray();
    for (const auto& record : records)
        write(text, record);
    return Response::Json(200, text.EndArray().EndObject().Take());
}

template <typename Records>
Response ListAnswer(const char* name, const Records& records)
{
    return ListAnswer(name, records, [](JsonText& text, const auto& record) { Append(text, record); });
}

QByteArray ETag(qint64 revision);

// What a request carries; each of these throws a Refusal when it is not as it must be.

// The small JSON object of a request.
QJsonObject SmallObject(const Request& request);

// The revision that a change is based on (If-Match).
qint64 BasedOnRevision(const Request& request);

// A percent-encoded UTF-8 header value; null when the header is missing.
QString HeaderText(const Request& request, const char* name);

// 1 to `most` characters, none of them a control character, not only blanks.
bool IsName(const QString& text, int most);
} // namespace server::wire
