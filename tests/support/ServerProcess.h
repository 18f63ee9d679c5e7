// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"

#include <QByteArray>
#include <QProcess>
#include <QString>

// A real rpa-version-server for one test: embedded mode, a free port of 127.0.0.1, a data folder that goes
// with it. Knows five accounts: of vendor "vender-a" the authors "author-1" and "author-2", the user "user-1"
// and the administrator "admin-1"; of "vender-b" the author "author-3".
//
//   ServerProcess server;
//   QVERIFY2(server.Start(), server.ErrorText());
//   request.setRawHeader("Authorization", "Bearer " + server.Token(QStringLiteral("author-1")));
class ServerProcess
{
public:
    ServerProcess();
    ~ServerProcess(); // kills what still runs

    // Blocks until the server is ready (at most 20 s); false with ErrorText() otherwise.
    bool Start();

    // Ends it as the workstation does, by closing its input; true when it ended by itself with exit code 0.
    bool Stop();

    // Ends it at once (SIGKILL), as a power cut would.
    void Kill();

    // Ends it and starts it again on the same port with the same data and the same tokens.
    bool Restart();

    bool IsRunning() const;
    qint64 ProcessId() const;

    // "http://127.0.0.1:PORT", without a slash at the end.
    QString BaseUrl() const;
    quint16 Port() const;

    // The token of one of the accounts.
    QByteArray Token(const QString& pin) const;

    // The folder with the store, "versions.db" in it.
    QString DataDir() const;

    // Log lines (JSON) that the server has written since its last start.
    QByteArray Log();
    const char* ErrorText() const;

private:
    bool WaitUntilReady();
    QByteArray EmbeddingLine() const;

    TestFolder folder;
    QProcess process;
    quint16 port = 0;
    QByteArray log;
    QByteArray errorText;
};
