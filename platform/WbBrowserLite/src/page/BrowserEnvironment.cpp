// SPDX-License-Identifier: Apache-2.0

#include "BrowserEnvironment_p.h"

#include <QByteArrayList>
#include <QtGlobal>

namespace
{
constexpr auto flagsVariable = "QTWEBENGINE_CHROMIUM_FLAGS";
}

void BrowserEnvironment::RefuseDebuggers()
{
    qunsetenv("QTWEBENGINE_REMOTE_DEBUGGING");
    QByteArrayList kept;
    const QByteArrayList flags = qgetenv(flagsVariable).split(' ');
    for (const QByteArray& flag : flags)
        if (!flag.startsWith("--remote-debugging"))
            kept.append(flag);
    if (kept.size() != flags.size())
        qputenv(flagsVariable, kept.join(' '));
}
