// SPDX-License-Identifier: Apache-2.0

#include "NoteRules.h"

namespace server::rules
{
Outcome<QString> NoteSave(Transaction& store, const Account& account, const QString& versionId,
                          qint64 revision, const QString& note, qint64 now)
{
    const auto version = EditableVersion(store, account, versionId);
    if (const auto* refusal = std::get_if<Refusal>(&version))
        return *refusal;
    const auto pin = store.WhoSaved(versionId, revision);
    if (!pin)
        return refusals::NotFound();
    if (*pin != account.pin)
        return refusals::Forbidden();
    store.SetNote(versionId, revision, note, now);
    return note;
}
} // namespace server::rules
