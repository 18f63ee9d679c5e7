#pragma once

#include <QTcpServer>
#include <QTcpSocket>

using RpaRunServer = QTcpServer;
using RpaRunSocket = QTcpSocket;
