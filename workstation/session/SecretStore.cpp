// SPDX-License-Identifier: Apache-2.0

#include "SecretStore.h"

#include "SecretSeal.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace
{
constexpr char mark[] = "RPA-SECRET-1\n";
constexpr int markBytes = sizeof(mark) - 1;
constexpr int digestBytes = 32;
constexpr qint64 longestFile = 64 * 1024;

QByteArray Framed(const QByteArray& secret)
{
    return mark + QCryptographicHash::hash(secret, QCryptographicHash::Sha256) + secret;
}

// Encryption alone would not tell on every system that something is missing.
QByteArray Unframed(const QByteArray& frame)
{
    const QByteArray secret = frame.mid(markBytes + digestBytes);
    return frame == Framed(secret) ? secret : QByteArray();
}
} // namespace

bool SecretStore::Write(const QByteArray& secret)
{
    // What lies there goes first: a link would lead the secret elsewhere.
    Remove();
    const QByteArray sealed = SecretSeal::Seal(Framed(secret));
    QSaveFile target(file);
    const bool written = !secret.isEmpty() && !sealed.isEmpty() && sealed.size() <= longestFile &&
                         target.open(QIODevice::WriteOnly) &&
                         target.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
                         target.write(sealed) == sealed.size();
    return written && target.commit();
}

QByteArray SecretStore::Read() const
{
    QFile source(file);
    if (!SecretSeal::IsPrivate(file) || source.size() > longestFile || !source.open(QIODevice::ReadOnly))
        return {};
    return Unframed(SecretSeal::Unseal(source.read(longestFile)));
}

void SecretStore::Remove()
{
    QFile::remove(file);
}
