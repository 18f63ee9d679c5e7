// SPDX-License-Identifier: Apache-2.0

#include "Keychain.h"

#include <QTimer>

Keychain::Keychain(const QString& secretKey, QObject* parent) : QObject(parent), key(secretKey) {}

bool Keychain::IsOffered()
{
    return false;
}

void Keychain::Read(const Answer& answer)
{
    QTimer::singleShot(0, this, [answer] { answer(Result::Failed, QByteArray()); });
}

void Keychain::Write(const QByteArray&, const Answer& answer)
{
    Read(answer);
}

void Keychain::Remove(const Answer& answer)
{
    Read(answer);
}
