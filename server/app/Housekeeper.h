// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Log.h"
#include "../store/Store.h"

#include <chrono>

namespace server
{
// Removes sessions, answers and usage events that are outdated from the store, now and then, for as long as it lives.
class Housekeeper
{
public:
    Housekeeper(Store& store, Log& log, std::chrono::seconds every);
    ~Housekeeper();

private:
    void Work();
    void TidyUp();

    Store& store;
    Log& log;
    const std::chrono::seconds every;
    std::mutex mutex;
    std::condition_variable changed;
    bool ending = false;
    Thread worker;
};
} // namespace server
