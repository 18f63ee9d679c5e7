// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPointer>

// A part that somebody handed to the engine and may destroy without telling: the editor of an app, its pages
// and its model go away when the user closes it. Parts that are no QObject must be taken away by their owner.
template <typename Part>
class Handed
{
public:
    Handed& operator=(Part* value)
    {
        part = value;
        object = dynamic_cast<QObject*>(value);
        isObject = object;
        return *this;
    }

    // Null when nothing was handed over or it is gone.
    Part* Get() const { return isObject && !object ? nullptr : part; }

private:
    Part* part = nullptr;
    QPointer<QObject> object;
    bool isObject = false;
};
