// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../options/Options.h"

#include <memory>

namespace server
{
// The running service: puts the parts together and holds them.
class Service
{
public:
    // Opens the store; throws StoreError.
    Service(const Options& options, Log& log);
    ~Service();

    // Serves until the process is asked to end; the exit code.
    int Run();

    // The route table as JSON.
    QByteArray RouteTable() const;

private:
    struct Parts;
    bool Begin(std::string& address);
    void Encrypt();
    void StopWhenAsked();

    const Options options;
    Log& log;
    std::unique_ptr<Parts> parts;
};
} // namespace server
