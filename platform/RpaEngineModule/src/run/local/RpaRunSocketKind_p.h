#pragma once

#include <QLocalServer>
#include <QLocalSocket>

using RpaRunServer = QLocalServer;
using RpaRunSocket = QLocalSocket;
