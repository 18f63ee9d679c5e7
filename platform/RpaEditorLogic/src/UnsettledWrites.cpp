#include "UnsettledWrites_p.h"

#include <algorithm>

namespace
{
bool IsSurelyUndone(const WbHttpAnswer& answer)
{
    switch (answer.error) {
    case WbHttpError::None:
        return answer.status >= 400 && answer.status < 500;
    case WbHttpError::BadRequest:
    case WbHttpError::CannotConnect:
    case WbHttpError::TlsFailed:
        return true;
    default:
        return false;
    }
}
} // namespace

QString UnsettledWrites::KeyOf(const SaveOrder& order)
{
    // Ids hold no slash, so the two kinds never meet.
    return order.versionId.isEmpty() ? order.appId + QLatin1Char('/') + order.content.name : order.versionId;
}

void UnsettledWrites::Note(const SaveOrder& order, const WbHttpAnswer& answer)
{
    if (!answer.sentDigest.isEmpty() && !IsSurelyUndone(answer))
        writes.insert(KeyOf(order), {order.base, answer.sentDigest.toHex()});
}

void UnsettledWrites::Settle(const SaveOrder& order)
{
    writes.remove(KeyOf(order));
}

void UnsettledWrites::SettleVersion(const QString& versionId)
{
    writes.remove(versionId);
}

bool UnsettledWrites::MayExplain(const SaveOrder& order, const WbHttpAnswer& refusal) const
{
    const int status = order.versionId.isEmpty() ? 409 : 412;
    return refusal.error == WbHttpError::None && refusal.status == status && writes.contains(KeyOf(order));
}

std::optional<ServiceAnswers::VersionRecord>
UnsettledWrites::FindOwn(const SaveOrder& order, const QVector<ServiceAnswers::VersionRecord>& listed) const
{
    const Write write = writes.value(KeyOf(order));
    const auto own = std::find_if(listed.cbegin(), listed.cend(), [&](const auto& record) {
        const bool isNamed = order.versionId.isEmpty() ? record.snapshot->GetName() == order.content.name
                                                       : record.snapshot->GetId() == order.versionId;
        return isNamed && record.revision == write.base + 1 && record.sha256 == write.sha256;
    });
    return own == listed.cend() ? std::nullopt : std::optional(*own);
}
