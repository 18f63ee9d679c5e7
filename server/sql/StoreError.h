// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <stdexcept>

namespace server
{
enum class StoreFault
{
    Unavailable, // no connection, locked too long: nothing was changed by this call
    Full,        // the disk is full: nothing was changed
    Conflict,    // another server process was first
    Corrupt,     // stored bytes do not have the SHA-256 they were stored with
    Internal,
};

class StoreError : public std::runtime_error
{
public:
    StoreError(StoreFault theFault, const QString& text)
        : std::runtime_error(text.toStdString()), fault(theFault)
    {
    }
    StoreFault Fault() const { return fault; }

private:
    StoreFault fault;
};
} // namespace server
