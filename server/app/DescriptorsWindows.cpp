// SPDX-License-Identifier: Apache-2.0

#include "Descriptors.h"

namespace server
{
int ConnectionsThatFit(int wanted, int)
{
    return wanted;
}
} // namespace server
