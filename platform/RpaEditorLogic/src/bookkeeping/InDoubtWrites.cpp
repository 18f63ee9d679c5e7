// SPDX-License-Identifier: Apache-2.0

#include "InDoubtWrites_p.h"

#include <algorithm>

QString InDoubtWrites::KeyOf(const SaveOrder& order)
{
    // Ids hold no slash, so the two kinds never meet.
    return order.versionId.isEmpty() ? order.appId + QLatin1Char('/') + order.content.name : order.versionId;
}

void InDoubtWrites::Note(const SaveOrder& order, const TriedAnswer& answer)
{
    if (answer.sentDigest.isEmpty() || !answer.mayBeDone)
        return;
    // None takes the place of an earlier one: any of them may be the one that was done.
    writes[KeyOf(order)].append({order.base, answer.sentDigest.toHex()});
}

void InDoubtWrites::NoteEarlier(const QString& versionId, int base, const QByteArrayList& sha256s)
{
    for (const QByteArray& sha256 : sha256s)
        writes[versionId].append({base, sha256});
}

bool InDoubtWrites::MayExplain(const SaveOrder& order, const WbHttpAnswer& refusal) const
{
    const int status = order.versionId.isEmpty() ? 409 : 412;
    return refusal.error == WbHttpError::None && refusal.status == status && writes.contains(KeyOf(order));
}

std::optional<VersionServiceVersion>
InDoubtWrites::FindOwn(const SaveOrder& order, const QVector<VersionServiceVersion>& listed) const
{
    const QVector<Write> inDoubt = writes.value(KeyOf(order));
    const auto own = std::find_if(listed.cbegin(), listed.cend(), [&](const auto& record) {
        const bool isNamed =
            order.versionId.isEmpty() ? record.name == order.content.name : record.id == order.versionId;
        return isNamed && std::any_of(inDoubt.cbegin(), inDoubt.cend(), [&record](const Write& write) {
                   return record.revision == write.base + 1 && record.sha256 == write.sha256;
               });
    });
    return own == listed.cend() ? std::nullopt : std::optional(*own);
}
