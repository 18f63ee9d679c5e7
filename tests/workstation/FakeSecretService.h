// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QVector>

// A secret as the service's interface carries it.
struct BusSecret
{
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};
Q_DECLARE_METATYPE(BusSecret)
QDBusArgument& operator<<(QDBusArgument& to, const BusSecret& secret);
const QDBusArgument& operator>>(const QDBusArgument& from, BusSecret& secret);

// Plays the desktop's secret service (org.freedesktop.secrets) on a bus: one collection, always open, secrets
// in the clear.
class FakeSecretService : public QDBusVirtualObject
{
public:
    enum class Mood
    {
        Answering,
        Refusing,
        Mute, // until the mood changes: then what was asked meanwhile is answered
    };

    explicit FakeSecretService(const QString& busAddress);

    // On the bus under its name; a fresh one is not.
    bool Enter();
    void Leave();

    void SetMood(Mood mood);

    int CountItems() const { return items.size(); }
    int CountWaiting() const { return waiting.size(); }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    using Attributes = QMap<QString, QString>;
    struct Item
    {
        Attributes attributes;
        BusSecret secret;
    };

    QDBusMessage Answer(const QDBusMessage& message);
    QVariantList Values(const QDBusMessage& message);
    QList<QDBusObjectPath> Find(const Attributes& attributes) const;
    QDBusObjectPath Create(const QDBusMessage& message);
    QVariant Secrets(const QDBusMessage& message) const;

    QDBusConnection bus;
    Mood mood = Mood::Answering;
    QMap<QString, Item> items;
    int nextItem = 1;
    QVector<QDBusMessage> waiting;
};
