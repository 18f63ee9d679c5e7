// SPDX-License-Identifier: Apache-2.0

#include "FakeSecretService.h"

#include <QDBusMetaType>

#include <utility>

namespace
{
const QString root = QStringLiteral("/org/freedesktop/secrets");
const QString busName = QStringLiteral("org.freedesktop.secrets");

using BusSecrets = QMap<QDBusObjectPath, BusSecret>;
using Texts = QMap<QString, QString>;

QDBusObjectPath NoPrompt()
{
    return QDBusObjectPath(QStringLiteral("/"));
}
} // namespace

Q_DECLARE_METATYPE(BusSecrets)
Q_DECLARE_METATYPE(Texts)

QDBusArgument& operator<<(QDBusArgument& to, const BusSecret& secret)
{
    to.beginStructure();
    to << secret.session << secret.parameters << secret.value << secret.contentType;
    to.endStructure();
    return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, BusSecret& secret)
{
    from.beginStructure();
    from >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    from.endStructure();
    return from;
}

FakeSecretService::FakeSecretService(const QString& busAddress)
    : bus(QDBusConnection::connectToBus(busAddress, QStringLiteral("secret service")))
{
    qDBusRegisterMetaType<BusSecret>();
    qDBusRegisterMetaType<BusSecrets>();
    qDBusRegisterMetaType<Texts>();
    bus.registerVirtualObject(root, this, QDBusConnection::SubPath);
}

bool FakeSecretService::Enter()
{
    return bus.registerService(busName);
}

void FakeSecretService::Leave()
{
    bus.unregisterService(busName);
}

void FakeSecretService::SetMood(Mood value)
{
    mood = value;
    if (mood == Mood::Mute)
        return;
    const QVector<QDBusMessage> asked = std::exchange(waiting, {});
    for (const QDBusMessage& message : asked)
        bus.send(Answer(message));
}

QString FakeSecretService::introspect(const QString&) const
{
    return {};
}

bool FakeSecretService::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (mood == Mood::Mute)
        waiting << message;
    else
        bus.send(Answer(message));
    return true;
}

QDBusMessage FakeSecretService::Answer(const QDBusMessage& message)
{
    if (mood == Mood::Refusing)
        return message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("refused"));
    // What the two would agree on to hide secrets from whoever listens.
    if (message.member() == QLatin1String("OpenSession") &&
        message.arguments().value(0).toString() != QLatin1String("plain"))
        return message.createErrorReply(QDBusError::NotSupported, QStringLiteral("plain only"));
    return message.createReply(Values(message));
}

QVariantList FakeSecretService::Values(const QDBusMessage& message)
{
    const QString asked = message.member();
    if (asked == QLatin1String("OpenSession"))
        return {QVariant::fromValue(QDBusVariant(QString())),
                QVariant::fromValue(QDBusObjectPath(root + QStringLiteral("/session/1")))};
    if (asked == QLatin1String("SearchItems"))
        return {QVariant::fromValue(Find(qdbus_cast<Attributes>(message.arguments().value(0)))),
                QVariant::fromValue(QList<QDBusObjectPath>())};
    if (asked == QLatin1String("GetSecrets"))
        return {Secrets(message)};
    if (asked == QLatin1String("CreateItem"))
        return {QVariant::fromValue(Create(message)), QVariant::fromValue(NoPrompt())};
    if (asked == QLatin1String("Delete")) {
        items.remove(message.path());
        return {QVariant::fromValue(NoPrompt())};
    }
    return {QVariantMap()}; // GetAll: no properties
}

QList<QDBusObjectPath> FakeSecretService::Find(const Attributes& attributes) const
{
    QList<QDBusObjectPath> found;
    for (auto item = items.cbegin(); item != items.cend(); ++item) {
        bool fits = true;
        for (auto wanted = attributes.cbegin(); wanted != attributes.cend(); ++wanted)
            fits = fits && item->attributes.value(wanted.key()) == wanted.value();
        if (fits)
            found << QDBusObjectPath(item.key());
    }
    return found;
}

QDBusObjectPath FakeSecretService::Create(const QDBusMessage& message)
{
    const QVariantList arguments = message.arguments();
    const auto properties = qdbus_cast<QVariantMap>(arguments.value(0));
    Item item;
    item.attributes =
        qdbus_cast<Attributes>(properties.value(QStringLiteral("org.freedesktop.Secret.Item.Attributes")));
    item.secret = qdbus_cast<BusSecret>(arguments.value(1));
    const bool isReplacing = arguments.value(2).toBool();
    const QList<QDBusObjectPath> same = isReplacing ? Find(item.attributes) : QList<QDBusObjectPath>();
    const QString path =
        same.isEmpty() ? root + QStringLiteral("/collection/login/%1").arg(nextItem++) : same.first().path();
    items.insert(path, item);
    return QDBusObjectPath(path);
}

QVariant FakeSecretService::Secrets(const QDBusMessage& message) const
{
    BusSecrets secrets;
    const auto asked = qdbus_cast<QList<QDBusObjectPath>>(message.arguments().value(0));
    for (const QDBusObjectPath& path : asked)
        if (items.contains(path.path()))
            secrets.insert(path, items.value(path.path()).secret);
    return QVariant::fromValue(secrets);
}
