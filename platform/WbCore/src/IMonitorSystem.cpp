// SPDX-License-Identifier: Apache-2.0

#include "UsageMonitor_p.h"

#include <WbCore/IMonitorSystem.h>
#include <WbFoundation/JsonWriter.h>

#include <QDateTime>
#include <QUuid>

#include <atomic>

// Gives events to the usage monitor's queue. Parameters name accounts, apps and processes: they go no further.
class BuiltInMonitor : public IMonitorSystem
{
public:
    void ReportEvent(const QString& eventId, const QString& pageId, const QList<QString>&) override
    {
        JsonWriter writer;
        writer.BeginObject();
        writer.Member("id", QUuid::createUuid().toString(QUuid::WithoutBraces));
        writer.Member("event", eventId);
        writer.Member("page", pageId);
        writer.Key("time");
        writer.Int64(QDateTime::currentMSecsSinceEpoch());
        writer.EndObject();
        UsageMonitor::Instance()->d->Add(writer.Take());
    }
};

namespace
{
std::atomic<IMonitorSystem*> replacement{nullptr};
}

IMonitorSystem::~IMonitorSystem() = default;

IMonitorSystem* IMonitorSystem::GetMonitorSystem()
{
    static BuiltInMonitor builtIn;
    IMonitorSystem* other = replacement.load();
    return other ? other : &builtIn;
}

void IMonitorSystem::SetMonitorSystem(IMonitorSystem* monitor)
{
    replacement.store(monitor);
}
