// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QSet>

#include <vector>

// The member names seen in each of the open objects, to find one that comes twice. Small objects are searched
// in a row, large ones by hash; names of closed objects leave no memory behind.
class JsonKeySet
{
public:
    void Open() { scopes.push_back({keys.size(), bytes.size(), {}}); }
    void Close();
    // False when the innermost open object has the name already.
    bool Add(const QByteArray& key);

private:
    struct Key
    {
        int offset;
        int length;
    };
    struct Scope
    {
        size_t firstKey;
        size_t firstByte;
        QSet<QByteArray> many; // in use beyond a few names
    };

    bool AddToMany(Scope& scope, const QByteArray& key);
    bool IsKnown(const Scope& scope, const QByteArray& key) const;

    std::vector<char> bytes;
    std::vector<Key> keys;
    std::vector<Scope> scopes;
};
