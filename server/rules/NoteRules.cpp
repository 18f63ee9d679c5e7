// SPDX-License-Identifier: Apache-2.0

#include "NoteRules.h"

namespace server::rules
{
QString NoteSave(Transaction& store, const Account& account, const QString& versionId, qint64 revision,
                 const QString& note, qint64 now)
{
    const auto version = EditableVersion(store, account, versionId);
    const auto pin = store.WhoSaved(versionId, revision);
    if (!pin)
        throw refusals::NotFound();
    if (*pin != account.pin)
        throw refusals::Forbidden();
    store.SetNote(versionId, revision, note, now);
    return note;
}
} // namespace server::rules
