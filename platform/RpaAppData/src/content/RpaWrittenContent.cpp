// SPDX-License-Identifier: Apache-2.0

#include "RpaWrittenContent_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppDataNotify.h>

#include <QPointer>

namespace
{
struct Written
{
    QPointer<RpaAppData> app;
    QByteArray json; // shared with whoever asked for it
    bool isGoing = false;
};

Written& Last()
{
    static Written written;
    return written;
}
} // namespace

void RpaWrittenContent::Note(const RpaAppData* app, const QByteArray& json)
{
    Written& last = Last();
    last.app = const_cast<RpaAppData*>(app);
    last.json = json;
    if (last.isGoing)
        return;
    // A text may be large, and nobody asks for it later than the act that it was written for.
    last.isGoing = true;
    QMetaObject::invokeMethod(
        RpaAppDataNotify::Instance(), [] { Last() = Written(); }, Qt::QueuedConnection);
}

RpaAppData* RpaWrittenContent::FindWriter(const QString& json)
{
    const Written& last = Last();
    const bool isSame = last.app && json.size() <= last.json.size() && QString::fromUtf8(last.json) == json;
    return isSame ? last.app.data() : nullptr;
}
