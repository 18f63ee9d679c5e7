// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLocalServer>
#include <QLocalSocket>

using RpaRunServer = QLocalServer;
using RpaRunSocket = QLocalSocket;
