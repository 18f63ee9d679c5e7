// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QMetaType>

// How the workstation stands with its version server.
enum class ServerState
{
    Connecting,
    Connected,
    Broken,
};

Q_DECLARE_METATYPE(ServerState)
