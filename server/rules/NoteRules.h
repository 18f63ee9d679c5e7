// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionRules.h"

namespace server::rules
{
// What whoever saved a revision says of it; an empty note takes the former away. Only the one who saved it
// speaks for it. Ends with the note.
QString NoteSave(Transaction& store, const Account& account, const QString& versionId, qint64 revision,
                 const QString& note, qint64 now);
} // namespace server::rules
