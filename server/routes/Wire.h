// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/JsonText.h"
#include "../http/Request.h"
#include "../rules/Outcome.h"
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

Response AppAnswer(int status, const App& app);
Response VersionAnswer(int status, const Version& version); // with its ETag
Response Refused(const Refusal& refusal);
Response BadRequest(const char* code, const QString& message);

QByteArray ETag(qint64 revision);

// The small JSON object of a request.
Outcome<QJsonObject> SmallObject(const Request& request);

// The revision that a change is based on (If-Match).
Outcome<qint64> BasedOnRevision(const Request& request);

// A percent-encoded UTF-8 header value; null when the header is missing.
Outcome<QString> HeaderText(const Request& request, const char* name);

// 1 to `most` characters, none of them a control character, not only blanks.
bool IsName(const QString& text, int most);
} // namespace server::wire
