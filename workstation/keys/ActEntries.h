// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

#include <functional>

class KeyActs;
class QWidget;

// An act as it is listed: what it does, its key, and why it cannot be done now.
struct ActEntry
{
    QString group;
    QString text;
    QString key;
    QString reason; // empty: it can be done
    std::function<void()> deed;
};

// The acts of the key table, and those that the parts of a page offer by themselves.
namespace ActEntries
{
// visibleOnly: without what stands on a part of the page that is not shown.
QVector<ActEntry> Of(const KeyActs& acts, const QWidget& page, bool visibleOnly);
} // namespace ActEntries
