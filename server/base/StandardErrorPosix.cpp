// SPDX-License-Identifier: Apache-2.0

#include "StandardError.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <unistd.h>

namespace
{
constexpr int betweenLooksMs = 100;
}

bool server::WriteStandardError(const QByteArray& text, const std::function<bool()>& hasGivenUp)
{
    int written = 0;
    while (written < text.size()) {
        pollfd descriptor{STDERR_FILENO, POLLOUT, 0};
        if (::poll(&descriptor, 1, betweenLooksMs) <= 0) {
            if (hasGivenUp())
                return false;
            continue;
        }
        // A pipe that takes something takes at least this much without waiting.
        const auto size = static_cast<std::size_t>(std::min(text.size() - written, PIPE_BUF));
        const ssize_t count = ::write(STDERR_FILENO, text.constData() + written, size);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return false;
        written += static_cast<int>(std::max<ssize_t>(count, 0));
    }
    return true;
}
