// SPDX-License-Identifier: Apache-2.0

#include "BrowserSandbox_p.h"

QString BrowserSandbox::Obstacle()
{
    // The system gives every process its sandbox, administrators' included.
    return QString();
}
