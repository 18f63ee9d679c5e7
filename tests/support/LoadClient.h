// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "NativeSocket.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

// A keep-alive HTTP client on a blocking socket: as little as possible between the figures and the server.
class LoadClient
{
public:
    explicit LoadClient(unsigned short port);
    ~LoadClient();
    LoadClient(const LoadClient&) = delete;
    LoadClient& operator=(const LoadClient&) = delete;

    struct Answer
    {
        int status = 0;
        std::size_t bodyBytes = 0;
        std::string head;
        std::string body; // only when asked for
    };

    // Sends a complete request and reads its answer; status 0 when the connection broke.
    Answer Ask(const std::string& request, bool keepBody = false);

    // Ends the connection; a request that waits for its answer gets none. Any thread.
    void End();

private:
    bool ReadMore();

    const NativeSocket::Handle socket;
    std::vector<char> buffer;
    std::size_t filled = 0;
};

struct LoadFigures
{
    double perSecond = 0;
    double p50Ms = 0;
    double p99Ms = 0;
    long failures = 0;
};

// Runs `clients` clients at once for `duration`. Every status other than `expected` counts
// as a failure.
LoadFigures RunLoad(unsigned short port, int clients, std::chrono::milliseconds duration, int expected,
                    const std::function<std::string(int client, long round)>& makeRequest);
