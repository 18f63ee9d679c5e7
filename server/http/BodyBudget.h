// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <mutex>

namespace server
{
// How much memory the bodies of requests and answers may take: all together, those of one account and those
// of one address. Any thread.
class BodyBudget
{
public:
    // Up to this size a body takes nothing of the budget: the limit on connections bounds such bodies.
    static constexpr qint64 freeBytes = 64 * 1024;

    struct Limits
    {
        qint64 total;
        qint64 perAccount;
        qint64 perAddress;
    };

    // What one connection holds of the budget; it gives it back when it goes.
    class Share
    {
    public:
        Share(BodyBudget& budget, QByteArray address);
        ~Share();
        Share(const Share&) = delete;
        Share& operator=(const Share&) = delete;

        // Holds as much as a request's body of that size needs, for an account or, with an empty name, for
        // nobody; false, and what is held stays, when that would break a limit.
        bool HoldRequest(const QString& account, qint64 bytes);
        // The same for an answer. A part of the whole is kept from answers, so that slow readers leave room
        // for those who save.
        bool HoldAnswer(const QString& account, qint64 bytes);
        void Release();

    private:
        bool Hold(const QString& account, qint64 bytes, qint64 total);

        BodyBudget& budget;
        const QByteArray address;
        QString account;
        qint64 held = 0;
    };

    explicit BodyBudget(const Limits& theLimits) : limits(theLimits) {}

    qint64 Used() const;

private:
    void Add(const QByteArray& address, const QString& account, qint64 bytes);

    const Limits limits;
    mutable std::mutex mutex;
    qint64 used = 0;
    QHash<QByteArray, qint64> byAddress;
    QHash<QString, qint64> byAccount;
};
} // namespace server
