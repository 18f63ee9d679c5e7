// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

// JSON bytes as text, up to the first zero byte.
inline QString JsonText(const QByteArray& json)
{
    return QString::fromUtf8(json.constData());
}
