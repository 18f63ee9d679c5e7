// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../http/Request.h"
#include "../store/Store.h"

namespace server
{
// What a write may touch besides what it makes: the app that an id in the path leads to, or anything, as
// where a free name is looked for.
enum class Reach
{
    OneApp,
    Anything,
};

// Runs `act` as a write of the store and answers after its commit. The answer is kept under the request's
// idempotency key in the same transaction: the same request by the same account is answered again from there
// and not done a second time. A Refusal that `act` throws is such an answer too. Refuses a request without a
// key, and a key that stood for another request.
void WriteOnce(Store& store, const Request& request, std::function<Response(Transaction&)> act,
               const Reply& reply, Reach reach = Reach::OneApp);

// The same without a key, for what may be done twice. `touched` as in Write.
void WriteAgain(Store& store, std::function<Response(Transaction&)> act, const Reply& reply,
                const QStringList& touched = {});
} // namespace server
