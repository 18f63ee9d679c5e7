// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// A fault put in on purpose: whoever keeps the monkey must notice it, or would notice nothing.
enum class Plant
{
    None,
    DeadWidget,  // the editor goes on using a widget that was deleted
    Hang,        // the GUI thread does not come back
    StuckWindow, // the workstation does not close
    LostSaves,   // the store forgets saves that it acknowledged
};

namespace Plants
{
QStringList Names();
// Empty: none. Nothing for a name that is not among them.
std::optional<Plant> FromName(const QString& name);
QString NameOf(Plant plant);
} // namespace Plants
