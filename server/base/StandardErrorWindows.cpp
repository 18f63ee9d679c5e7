// SPDX-License-Identifier: Apache-2.0

#include "StandardError.h"

#include <cstdio>

// A pipe cannot be asked here whether it takes anything; the workstation, which is who starts servers on this
// system, reads what they write.
bool server::WriteStandardError(const QByteArray& text, const std::function<bool()>&)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
    return std::fflush(stderr) == 0;
}
