// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QUuid>
#include <QVector>

#include <algorithm>

// Small helpers that the lists of a UI page share.
namespace ListMove
{
// The index at which an insertion happens: -1 and what lies beyond the end mean the end.
inline int Place(int index, int count)
{
    return index < 0 || index > count ? count : index;
}

// Moves one element; to is its index afterwards. False when nothing moves.
template <class List>
bool Move(List& list, int from, int to)
{
    if (from < 0 || to < 0 || from >= list.size() || to >= list.size() || from == to)
        return false;
    list.move(from, to);
    return true;
}

inline QString MakeId()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}
} // namespace ListMove
