// SPDX-License-Identifier: Apache-2.0

#include "Keychain.h"

#include <QDBusConnection>
#include <QTimer>
#include <qt5keychain/keychain.h>

#include <chrono>

namespace
{
const QString program = QStringLiteral("rpa-workstation");
constexpr auto readWithin = std::chrono::minutes(1);
constexpr auto changeWithin = std::chrono::seconds(3);

Keychain::Result ResultOf(const QKeychain::Job& job)
{
    if (job.error() == QKeychain::NoError)
        return Keychain::Result::Done;
    // Removing what is not there is told as "could not delete"; what really fails has another name.
    const bool isMissing =
        job.error() == QKeychain::EntryNotFound || job.error() == QKeychain::CouldNotDeleteEntry;
    return isMissing ? Keychain::Result::NotFound : Keychain::Result::Failed;
}

// The job belongs to nobody: the service's answer, however late, is written into it, and it goes then.
void Start(QKeychain::Job* job, const QString& key, QObject* context, std::chrono::milliseconds patience,
           const Keychain::Answer& answer)
{
    job->setKey(key);
    auto* const deadline = new QTimer(context);
    deadline->setSingleShot(true);
    QObject::connect(deadline, &QTimer::timeout, context, [deadline, answer] {
        deadline->deleteLater();
        answer(Keychain::Result::Failed, QByteArray());
    });
    QObject::connect(job, &QKeychain::Job::finished, deadline, [deadline, answer](QKeychain::Job* ended) {
        if (!deadline->isActive())
            return;
        deadline->stop();
        deadline->deleteLater();
        const auto* read = qobject_cast<QKeychain::ReadPasswordJob*>(ended);
        answer(ResultOf(*ended), read ? read->binaryData() : QByteArray());
    });
    deadline->start(patience);
    job->start();
}
} // namespace

Keychain::Keychain(const QString& secretKey, QObject* parent) : QObject(parent), key(secretKey) {}

bool Keychain::IsOffered()
{
    return QDBusConnection::sessionBus().isConnected();
}

void Keychain::Read(const Answer& answer)
{
    Start(new QKeychain::ReadPasswordJob(program), key, this, readWithin, answer);
}

void Keychain::Write(const QByteArray& secret, const Answer& answer)
{
    auto* const job = new QKeychain::WritePasswordJob(program);
    job->setBinaryData(secret);
    Start(job, key, this, changeWithin, answer);
}

void Keychain::Remove(const Answer& answer)
{
    Start(new QKeychain::DeletePasswordJob(program), key, this, changeWithin, answer);
}
