// SPDX-License-Identifier: Apache-2.0

#include "RpaContentReference_p.h"

#include <QUuid>

namespace
{
const QByteArray& Start()
{
    static const QByteArray start =
        "{\"contentReference\":\"" + QUuid::createUuid().toByteArray(QUuid::Id128) + '-';
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
    return Start() + key + end;
}

void RpaContentReference::SetFetch(const Fetch& fetch)
{
    Current() = fetch;
}

QByteArray RpaContentReference::Resolve(const QByteArray& json)
{
    if (!json.startsWith(Start()) || !json.endsWith(end))
        return json;
    const Fetch fetch = Current();
    const int keySize = json.size() - Start().size() - endSize;
    return fetch ? fetch(json.mid(Start().size(), keySize)) : QByteArray();
}
