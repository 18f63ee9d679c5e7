// SPDX-License-Identifier: Apache-2.0

#include "RpaContentReference_p.h"

#include <QUuid>

namespace
{
const QByteArray& ReferenceStart()
{
    static const QByteArray start =
        R"({"contentReference":")" + QUuid::createUuid().toByteArray(QUuid::Id128) + '-';
    return start;
}

constexpr char end[] = "\"}";
constexpr int endSize = 2;

RpaContentReference::Fetch& Current()
{
    static RpaContentReference::Fetch fetch;
    return fetch;
}
} // namespace

QByteArray RpaContentReference::Make(const QByteArray& key)
{
    return ReferenceStart() + key + end;
}

void RpaContentReference::SetFetch(const Fetch& fetch)
{
    Current() = fetch;
}

QByteArray RpaContentReference::Resolve(const QByteArray& json)
{
    if (!json.startsWith(ReferenceStart()) || !json.endsWith(end))
        return json;
    const Fetch fetch = Current();
    const int keySize = json.size() - ReferenceStart().size() - endSize;
    return fetch ? fetch(json.mid(ReferenceStart().size(), keySize)) : QByteArray();
}
