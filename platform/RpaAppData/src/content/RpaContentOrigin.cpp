// SPDX-License-Identifier: Apache-2.0

#include "RpaStartContent_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaContentOrigin.h>

#include <QPointer>
#include <QVector>

#include <utility>

class RpaContentDelivery::Private
{
public:
    QByteArray content;
    RpaContentOrigin origin;
    bool isUnsaved = false;
    QVector<QPointer<RpaAppData>> filled;
};

namespace
{
QVector<RpaContentDelivery*>& UnderWay()
{
    static QVector<RpaContentDelivery*> deliveries;
    return deliveries;
}

std::optional<RpaStartContent::Content>& Start()
{
    static std::optional<RpaStartContent::Content> content;
    return content;
}
} // namespace

RpaContentDelivery::RpaContentDelivery(const QByteArray& json, const RpaContentOrigin& origin, bool isUnsaved)
    : d(std::make_unique<Private>())
{
    // Content is known by where its bytes are, which no two deliveries may share.
    d->content = Find(json) ? QByteArray(json.constData(), json.size()) : json;
    d->origin = origin;
    d->isUnsaved = isUnsaved;
    UnderWay().append(this);
}

RpaContentDelivery::~RpaContentDelivery()
{
    UnderWay().removeOne(this);
    if (!d->isUnsaved)
        return;
    for (const QPointer<RpaAppData>& app : qAsConst(d->filled))
        if (app)
            app->SetModified(true);
}

QByteArray RpaContentDelivery::GetContent() const
{
    return d->content;
}

bool RpaContentDelivery::IsAnyUnderWay()
{
    return !UnderWay().isEmpty();
}

RpaContentDelivery* RpaContentDelivery::Find(const QByteArray& content)
{
    for (RpaContentDelivery* delivery : qAsConst(UnderWay()))
        if (delivery->d->content.constData() == content.constData())
            return delivery;
    return nullptr;
}

void RpaContentDelivery::Fill(RpaAppData* app)
{
    app->SetOrigin(d->origin);
    d->filled.append(app);
}

void RpaStartContent::Set(const QByteArray& json, const RpaContentOrigin& origin)
{
    Start() = Content{json, origin};
}

void RpaStartContent::Clear()
{
    Start().reset();
}

bool RpaStartContent::IsSet()
{
    return Start().has_value();
}

std::optional<RpaStartContent::Content> RpaStartContent::Take()
{
    return std::exchange(Start(), std::nullopt);
}
