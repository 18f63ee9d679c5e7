// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTcpServer>
#include <QTcpSocket>

using RpaRunServer = QTcpServer;
using RpaRunSocket = QTcpSocket;
