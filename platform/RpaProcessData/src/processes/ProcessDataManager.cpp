// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCalls.h>
#include <WbFoundation/FreeNames.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QMap>

#include <vector>

class ProcessDataManager::Private
{
public:
    using Process = std::unique_ptr<RpaProcess>;
    using Processes = std::vector<Process>;

    bool IsFree(const ProcessDataManager& manager, const QString& name) const
    {
        return !name.trimmed().isEmpty() && manager.IndexOf(name) < 0;
    }

    static Process Make(const QString& name) { return Process(new RpaProcess(name, nullptr)); }
    static Processes ReadProcesses(JsonReader& reader);

    static Process Listen(ProcessDataManager& manager, Process process)
    {
        connect(process.get(), &RpaProcess::SigChanged, &manager, &ProcessDataManager::SigChanged);
        return process;
    }

    void Replace(ProcessDataManager& manager, Processes newProcesses);

    Processes processes;
    QByteArray unknown; // members written by a newer client
};

ProcessDataManager::ProcessDataManager(QObject* parent) : IJsonParser(parent), d(std::make_unique<Private>())
{
}

ProcessDataManager::~ProcessDataManager() = default;

int ProcessDataManager::GetCount() const
{
    return static_cast<int>(d->processes.size());
}

QStringList ProcessDataManager::GetProcessNames() const
{
    QStringList names;
    for (const auto& process : d->processes)
        names.append(process->GetName());
    return names;
}

QString ProcessDataManager::GetProcessNameFirst() const
{
    return d->processes.empty() ? QString() : d->processes.front()->GetName();
}

RpaProcess* ProcessDataManager::GetProcess(int index) const
{
    return index >= 0 && index < GetCount() ? d->processes[static_cast<size_t>(index)].get() : nullptr;
}

RpaProcess* ProcessDataManager::FindProcess(const QString& name) const
{
    return GetProcess(IndexOf(name));
}

int ProcessDataManager::IndexOf(const QString& name) const
{
    for (int i = 0; i < GetCount(); ++i)
        if (GetProcess(i)->GetName() == name)
            return i;
    return -1;
}

RpaProcess* ProcessDataManager::AddProcess(const QString& name, int index)
{
    if (!d->IsFree(*this, name))
        return nullptr;
    const int place = index < 0 || index > GetCount() ? GetCount() : index;
    d->processes.insert(d->processes.begin() + place, Private::Listen(*this, Private::Make(name)));
    emit SigProcessAdded(place);
    emit SigChanged();
    return GetProcess(place);
}

QString ProcessDataManager::MakeFreeName(const QString& stem) const
{
    FreeNames names;
    for (int i = 0; i < GetCount(); ++i)
        names.Take(GetProcess(i)->GetName());
    return names.TakeNumbered(stem);
}

bool ProcessDataManager::RenameProcess(const QString& name, const QString& newName)
{
    const int index = IndexOf(name);
    if (index < 0 || !d->IsFree(*this, newName))
        return false;
    GetProcess(index)->SetName(newName);
    const QVector<RpaStatementChange> calls = RpaProcessCalls::Renamed(*this, name, newName);
    for (const RpaStatementChange& call : calls)
        FindProcess(call.processName)->SetValues(call.after.id, call.after);
    emit SigProcessRenamed(index, name);
    emit SigChanged();
    return true;
}

bool ProcessDataManager::RemoveProcess(const QString& name)
{
    const int index = IndexOf(name);
    if (index < 0)
        return false;
    emit SigProcessAboutToBeRemoved(index);
    d->processes.erase(d->processes.begin() + index);
    emit SigProcessRemoved(index);
    emit SigChanged();
    return true;
}

bool ProcessDataManager::MoveProcess(int from, int to)
{
    if (!GetProcess(from) || !GetProcess(to) || from == to)
        return false;
    auto moved = std::move(d->processes[static_cast<size_t>(from)]);
    d->processes.erase(d->processes.begin() + from);
    d->processes.insert(d->processes.begin() + to, std::move(moved));
    emit SigProcessMoved(from, to);
    emit SigChanged();
    return true;
}

void ProcessDataManager::Clear()
{
    d->Replace(*this, {});
}

void ProcessDataManager::Private::Replace(ProcessDataManager& manager, Processes newProcesses)
{
    emit manager.SigAboutToReset();
    processes.clear();
    FreeNames names;
    for (Process& process : newProcesses) {
        // Names address processes: a nameless one, or a second one of the same name, could not be reached.
        if (!names.Take(process->GetName()))
            process->SetName(names.TakeNumbered(QStringLiteral("流程")));
        processes.push_back(Listen(manager, std::move(process)));
    }
    emit manager.SigReset();
    emit manager.SigChanged();
}

ProcessDataManager::Private::Processes ProcessDataManager::Private::ReadProcesses(JsonReader& reader)
{
    Processes read;
    if (!reader.EnterArray())
        return read;
    while (reader.NextElement()) {
        if (!reader.EnterObject())
            continue;
        read.push_back(Make(QString()));
        read.back()->ReadJson(reader);
    }
    return read;
}

bool ProcessDataManager::GetPackageInfo(RpaPackageInfo& info) const
{
    const RpaCommandCatalogue* catalogue = RpaCommandCatalogue::Instance();
    QMap<QString, QString> versions;
    for (const auto& process : d->processes) {
        process->ForEach([&](const RpaStatementNode& node) {
            const RpaCommandInfo* command = catalogue->Find(node.GetCommand());
            if (!command || command->packages.isEmpty() || !node.IsEffectivelyEnabled())
                return;
            for (const PackageItem& package : command->packages)
                versions.insert(package.name, package.version);
        });
    }

    QList<QSharedPointer<PackageItem>> items;
    for (auto package = versions.cbegin(); package != versions.cend(); ++package) {
        items.append(QSharedPointer<PackageItem>::create());
        items.last()->name = package.key();
        items.last()->version = package.value();
    }
    info.SetListPackageItemPtr(items);
    return !items.isEmpty();
}

void ProcessDataManager::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    writer.Key("processes");
    writer.BeginArray();
    for (const auto& process : d->processes)
        process->WriteJson(writer);
    writer.EndArray();
    writer.RawMembers(d->unknown);
    writer.EndObject();
}

IJsonParser::Commit ProcessDataManager::ReadJson(JsonReader& reader)
{
    if (!reader.RequireObject(QStringLiteral("流程数据应为对象")))
        return {};
    // A commit must be copyable, processes are not.
    const auto read = std::make_shared<Private::Processes>();
    QByteArray unknown;
    while (reader.NextMember())
        if (reader.IsKey("processes"))
            *read = Private::ReadProcesses(reader);
        else
            reader.KeepMember(unknown);
    return [this, read, unknown] {
        d->unknown = unknown;
        d->Replace(*this, std::move(*read));
    };
}
