// SPDX-License-Identifier: Apache-2.0

// The system encrypts for the signed-in user, with keys that it derives from the user's password.
#include "SecretSeal.h"

#include <QFileInfo>
#include <qt_windows.h>

#include <wincrypt.h>

namespace
{
// Keeps other programs of the same user from reading the secret by chance; no secret itself.
const QByteArray purpose = QByteArrayLiteral("rpa-workstation/sign-in/1");

DATA_BLOB BlobOf(const QByteArray& bytes)
{
    return {DWORD(bytes.size()), reinterpret_cast<BYTE*>(const_cast<char*>(bytes.constData()))};
}

QByteArray Taken(const DATA_BLOB& blob)
{
    const QByteArray bytes(reinterpret_cast<const char*>(blob.pbData), int(blob.cbData));
    SecureZeroMemory(blob.pbData, blob.cbData);
    LocalFree(blob.pbData);
    return bytes;
}
} // namespace

QByteArray SecretSeal::Seal(const QByteArray& plain)
{
    DATA_BLOB in = BlobOf(plain);
    DATA_BLOB entropy = BlobOf(purpose);
    DATA_BLOB out{};
    const bool sealed =
        CryptProtectData(&in, nullptr, &entropy, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &out);
    return sealed ? Taken(out) : QByteArray();
}

QByteArray SecretSeal::Unseal(const QByteArray& sealed)
{
    DATA_BLOB in = BlobOf(sealed);
    DATA_BLOB entropy = BlobOf(purpose);
    DATA_BLOB out{};
    const bool opened =
        CryptUnprotectData(&in, nullptr, &entropy, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &out);
    return opened ? Taken(out) : QByteArray();
}

bool SecretSeal::IsPrivate(const QString& file)
{
    const QFileInfo info(file);
    return info.isFile() && !info.isSymLink(); // the seal itself tells whose it is
}
