// SPDX-License-Identifier: Apache-2.0

#include "RpaRunHandshake_p.h"

#include <QRandomGenerator>
#include <QTimer>

namespace
{

QByteArray MakeToken()
{
    quint32 words[8];
    QRandomGenerator::system()->fillRange(words);
    return QByteArray(reinterpret_cast<const char*>(words), sizeof words).toHex();
}

// As long for a nearly right token as for a wrong one.
bool EqualInConstantTime(const QByteArray& a, const QByteArray& b)
{
    if (a.size() != b.size())
        return false;
    int difference = 0;
    for (int i = 0; i < a.size(); ++i)
        difference |= a.at(i) ^ b.at(i);
    return difference == 0;
}
} // namespace

RpaRunHandshake::RpaRunHandshake(QObject* parent) : QObject(parent), token(MakeToken())
{
    connect(&server, &RpaRunServer::newConnection, this, &RpaRunHandshake::Accept);
}

RpaRunHandshake::~RpaRunHandshake()
{
    Close();
}

void RpaRunHandshake::Accept()
{
    while (RpaRunSocket* guest = server.nextPendingConnection()) {
        if (guests.size() == placesAtMost)
            TurnAway(guests.first());
        guests << guest;
        guest->setReadBufferSize(token.size());
        connect(guest, &RpaRunSocket::readyRead, this, [this, guest] { Look(guest); });
        connect(guest, &RpaRunSocket::disconnected, this, [this, guest] { TurnAway(guest); });
        QTimer::singleShot(patienceMs, guest, [this, guest] {
            if (guests.contains(guest))
                TurnAway(guest);
        });
        Look(guest);
    }
}

void RpaRunHandshake::Look(RpaRunSocket* guest)
{
    // Turned away while its signal was under way.
    if (!guests.contains(guest) || guest->bytesAvailable() < token.size())
        return;
    if (!EqualInConstantTime(guest->read(token.size()), token)) {
        TurnAway(guest);
        return;
    }
    guests.removeOne(guest);
    guest->disconnect(this);
    // It is the server's child until now.
    guest->setParent(nullptr);
    Close();
    emit SigAdmitted(guest);
}

void RpaRunHandshake::TurnAway(RpaRunSocket* guest)
{
    guests.removeOne(guest);
    guest->disconnect(this);
    guest->abort();
    guest->deleteLater();
}

void RpaRunHandshake::Close()
{
    server.close();
    const QVector<RpaRunSocket*> others = guests;
    for (RpaRunSocket* other : others)
        TurnAway(other);
}
