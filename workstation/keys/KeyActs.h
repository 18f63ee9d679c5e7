// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "KeyTable.h"

#include <QHash>

#include <functional>

// What the acts of the key table do, and whether they can be done now. They are bound once, by whoever puts
// the workstation together.
class KeyActs
{
public:
    using Reason = std::function<QString()>;
    using Deed = std::function<void()>;

    // whyNot: what stands in the way now, in the user's words; empty when nothing does.
    void Bind(KeyAct act, const Reason& whyNot, const Deed& deed);

    void SetPlace(const std::function<KeyPlace()>& finder) { place = finder; }
    KeyPlace GetPlace() const { return place(); }

    QString WhyNot(KeyAct act) const;

    // Does it, or says what stands in the way.
    void Do(KeyAct act) const;

private:
    struct Binding
    {
        Reason whyNot;
        Deed deed;
    };

    QHash<int, Binding> bindings;
    std::function<KeyPlace()> place;
};
