// SPDX-License-Identifier: Apache-2.0

#include "Plant.h"

namespace
{
// In the order of the enumeration.
const QStringList names{QString(), QStringLiteral("dead-widget"), QStringLiteral("hang"),
                        QStringLiteral("stuck-window"), QStringLiteral("lost-saves")};
} // namespace

QStringList Plants::Names()
{
    return names.mid(1);
}

std::optional<Plant> Plants::FromName(const QString& name)
{
    const int index = names.indexOf(name);
    return index < 0 ? std::nullopt : std::optional(Plant(index));
}

QString Plants::NameOf(Plant plant)
{
    return names.at(int(plant));
}
