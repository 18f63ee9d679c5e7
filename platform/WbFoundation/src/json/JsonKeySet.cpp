// SPDX-License-Identifier: Apache-2.0

#include "JsonKeySet_p.h"

#include <algorithm>

namespace
{
constexpr size_t fewNames = 24;
}

void JsonKeySet::Close()
{
    keys.resize(scopes.back().firstKey);
    bytes.resize(scopes.back().firstByte);
    scopes.pop_back();
}

bool JsonKeySet::Add(const QByteArray& key)
{
    Scope& scope = scopes.back();
    if (keys.size() - scope.firstKey >= fewNames)
        return AddToMany(scope, key);

    if (IsKnown(scope, key))
        return false;
    keys.push_back({static_cast<int>(bytes.size()), key.size()});
    bytes.insert(bytes.end(), key.begin(), key.end());
    return true;
}

bool JsonKeySet::AddToMany(Scope& scope, const QByteArray& key)
{
    if (scope.many.isEmpty())
        for (size_t i = scope.firstKey; i < keys.size(); ++i)
            scope.many.insert(QByteArray(bytes.data() + keys[i].offset, keys[i].length));
    const int count = scope.many.size();
    scope.many.insert(key);
    return scope.many.size() > count;
}

bool JsonKeySet::IsKnown(const Scope& scope, const QByteArray& key) const
{
    for (size_t i = scope.firstKey; i < keys.size(); ++i) {
        // Most names differ in length already: comparing is cheaper than hashing.
        if (keys[i].length == key.size() &&
            std::equal(key.begin(), key.end(), bytes.begin() + keys[i].offset))
            return true;
    }
    return false;
}
