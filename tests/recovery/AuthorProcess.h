// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QString>

// A workstation with an author at it, as a process of its own that may be killed.
class AuthorProcess
{
public:
    // folder: settings and data of the workstation, kept from one process to the next.
    // serverProgram: of the version server that it starts.
    explicit AuthorProcess(const QString& folder,
                           const QString& serverProgram = QStringLiteral(SERVER_PROGRAM));
    ~AuthorProcess();

    // Starts it and signs in; false when it does not get that far.
    bool Start();

    // Tells the author to do something (Author.h) and waits until it was done; the text that came back. What
    // cannot be done within 10 s fails the test, with the name of the act.
    QString Do(const QString& act);

    // As a crash does: nothing of it runs any more.
    void Kill();
    // As a user does; true when the workstation ended by itself.
    bool Close();

private:
    QString folder;
    QString serverProgram;
    QProcess process;
};
