// SPDX-License-Identifier: Apache-2.0

#include "RpaStartContent_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaContentOrigin.h>

#include <QList>
#include <QPointer>

#include <utility>

class RpaContentSource::Private
{
public:
    RpaContentOrigin origin;
    bool isUnsaved = false;
    RpaContentSource* outer = nullptr;
    QList<QPointer<RpaAppData>> filled;
};

namespace
{
RpaContentSource* innermost = nullptr;

std::optional<RpaStartContent::Content>& Start()
{
    static std::optional<RpaStartContent::Content> content;
    return content;
}
} // namespace

RpaContentSource::RpaContentSource(const RpaContentOrigin& origin, bool isUnsaved)
    : d(std::make_unique<Private>())
{
    d->origin = origin;
    d->isUnsaved = isUnsaved;
    d->outer = std::exchange(innermost, this);
}

RpaContentSource::~RpaContentSource()
{
    innermost = d->outer;
    if (!d->isUnsaved)
        return;
    for (const QPointer<RpaAppData>& app : qAsConst(d->filled))
        if (app)
            app->SetModified(true);
}

RpaContentSource* RpaContentSource::Current()
{
    return innermost;
}

void RpaContentSource::Fill(RpaAppData* app)
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
