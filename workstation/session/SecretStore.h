// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

// One small secret of this user, kept in a file of its own: on Windows encrypted for the user, elsewhere
// readable by the user alone. Whatever else lies in its place (a cut file, a foreign one, one of another
// user) counts as no secret.
class SecretStore
{
public:
    // The folder of the file must be the user's own.
    explicit SecretStore(const QString& path) : file(path) {}

    // Replaces what was kept, and is on the disk when this returns. False, with nothing kept, when it cannot
    // be done.
    bool Write(const QByteArray& secret);

    // Exactly what was written last; empty when there is nothing, or nothing that can be used.
    QByteArray Read() const;

    void Remove();

private:
    const QString file;
};
