// SPDX-License-Identifier: Apache-2.0

#include "AppExtendInfoJson_p.h"
#include "content/RpaContentReference_p.h"
#include "content/RpaStartContent_p.h"
#include "content/RpaWrittenContent_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaUiaNodeManager.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QScopedValueRollback>
#include <QVector>

#include <algorithm>
#include <utility>

class RpaAppData::Private
{
public:
    struct Part
    {
        const char* name;
        IJsonParser* part;
    };

    // The parts that are records themselves, in the order in which they are written.
    QVector<Part> GetParts()
    {
        return {{"uiData", &uiData},
                {"processData", &processData},
                {"packageInfo", &packageInfo},
                {"htmlNodes", &htmlNodes},
                {"uiaNodes", &uiaNodes}};
    }

    IJsonParser* FindPart(const JsonReader& reader)
    {
        for (const Part& part : GetParts())
            if (reader.IsKey(part.name))
                return part.part;
        return nullptr;
    }

    QString version;
    RpaAppExtendInfo extendInfo;
    RpaAppRunTimeInfo runTimeInfo;
    RpaUIDataManager uiData;
    ProcessDataManager processData;
    RpaPackageInfo packageInfo;
    RpaHtmlNodeManager htmlNodes;
    RpaUiaNodeManager uiaNodes;
    RpaContentOrigin origin;
    RpaContentDelivery* delivery = nullptr; // of the content that is being parsed
    bool modified = false;
    bool isBeingSaved = false; // checked for it, and the mark is still to come off

    // Members written by a newer client.
    QByteArray unknown;
    QByteArray unknownExtendInfo;
};

RpaAppData::RpaAppData(QObject* parent) : IJsonParser(parent), d(std::make_unique<Private>())
{
    // Signals that carry the pointer may be queued.
    static const int metaType = qRegisterMetaType<RpaAppDataPtr>("RpaAppDataPtr");
    Q_UNUSED(metaType)
    connect(&d->uiData, &RpaUIDataManager::SigResultsChanged, this,
            [this] { emit RpaAppDataNotify::Instance()->SigResultsChanged(this); });
}

RpaAppData::~RpaAppData()
{
    emit RpaAppDataNotify::Instance()->SigGoing(this);
}

void RpaAppData::InitDefault()
{
    FillInDefault();
    if (RpaContentDelivery::IsAnyUnderWay())
        return; // loaded content follows
    const auto start = RpaStartContent::Take();
    if (start && Parse(start->json)) {
        SetOrigin(start->origin);
        SetModified(true);
    }
}

void RpaAppData::FillInDefault()
{
    const QString mainProcess = QStringLiteral("主流程");
    d->version.clear();
    d->extendInfo.manual.clear();
    d->unknown.clear();
    d->unknownExtendInfo.clear();
    d->packageInfo.SetListPackageItemPtr({});
    d->htmlNodes.Clear();
    d->uiaNodes.Clear();

    d->processData.Clear();
    d->processData.AddProcess(mainProcess);

    RpaToolItem start;
    start.text = QStringLiteral("开始");
    start.processName = mainProcess;
    d->uiData.Clear();
    d->uiData.AddUIData(QStringLiteral("界面1"), start);
    emit SigReplaced();
    emit RpaAppDataNotify::Instance()->SigReplaced(this);
}

RpaAppExtendInfo* RpaAppData::GetAppExtendInfo() const
{
    return &d->extendInfo;
}

RpaAppRunTimeInfo* RpaAppData::GetRunTimeInfo() const
{
    return &d->runTimeInfo;
}

RpaUIDataManager* RpaAppData::GetUIDataManager() const
{
    return &d->uiData;
}

ProcessDataManager* RpaAppData::GetProcessDataManager() const
{
    return &d->processData;
}

RpaPackageInfo* RpaAppData::GetPackageInfo() const
{
    return &d->packageInfo;
}

RpaHtmlNodeManager* RpaAppData::GetHtmlNodeManager() const
{
    return &d->htmlNodes;
}

RpaUiaNodeManager* RpaAppData::GetUiaNodeManager() const
{
    return &d->uiaNodes;
}

QString RpaAppData::GetVersion() const
{
    return d->version;
}

void RpaAppData::SetVersion(const QString& version)
{
    d->version = version;
}

void RpaAppData::CheckPackageInfo()
{
    d->isBeingSaved = true;
    RpaPackageInfo needed;
    d->processData.GetPackageInfo(needed);

    // The author's own choices stay, a version chosen there included; what the process needs beyond them is
    // added.
    QList<QSharedPointer<PackageItem>> items = d->packageInfo.GetListPackageItemPtr();
    const QList<QSharedPointer<PackageItem>> neededItems = needed.GetListPackageItemPtr();
    for (const QSharedPointer<PackageItem>& item : neededItems) {
        const bool known =
            std::any_of(items.cbegin(), items.cend(), [&](const QSharedPointer<PackageItem>& other) {
                return other->name.compare(item->name, Qt::CaseInsensitive) == 0;
            });
        if (!known)
            items.append(item);
    }
    d->packageInfo.SetListPackageItemPtr(items);
}

bool RpaAppData::GetModified() const
{
    return d->modified;
}

void RpaAppData::SetModified(bool modified)
{
    RpaAppDataNotify* const notify = RpaAppDataNotify::Instance();
    const bool wasModified = d->modified;
    SetMark(modified);
    if (modified) {
        emit SigEdited();
        emit notify->SigEdited(this);
        return;
    }
    const bool isSave = std::exchange(d->isBeingSaved, false);
    if (wasModified && isSave)
        emit notify->SigSaving(this);
    else if (wasModified)
        emit notify->SigGivenUp(this);
}

void RpaAppData::SetMark(bool modified)
{
    if (modified == d->modified)
        return;
    d->modified = modified;
    emit SigModifiedChanged(modified);
}

void RpaAppData::TakeBack()
{
    emit RpaAppDataNotify::Instance()->SigTakenBack(this);
    SetMark(false);
}

RpaContentOrigin RpaAppData::GetOrigin() const
{
    return d->origin;
}

void RpaAppData::SetOrigin(const RpaContentOrigin& origin)
{
    d->origin = origin;
}

void RpaAppData::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    writer.Member("version", d->version);
    writer.Key("extendInfo");
    AppExtendInfoJson::Write(writer, d->extendInfo, d->unknownExtendInfo);
    for (const Private::Part& part : d->GetParts()) {
        writer.Key(part.name);
        part.part->WriteJson(writer);
    }
    writer.RawMembers(d->unknown);
    writer.EndObject();
}

bool RpaAppData::Parse(const QByteArray& json)
{
    const QScopedValueRollback<RpaContentDelivery*> guard(d->delivery, RpaContentDelivery::Find(json));
    return IJsonParser::Parse(RpaContentReference::Resolve(json));
}

QByteArray RpaAppData::ToJson() const
{
    QByteArray json = IJsonParser::ToJson();
    RpaWrittenContent::Note(this, json);
    return json;
}

IJsonParser::Commit RpaAppData::ReadJson(JsonReader& reader)
{
    if (!reader.RequireObject(QStringLiteral("应用数据应为对象")))
        return {};
    QString version = d->version;
    RpaAppExtendInfo extendInfo = d->extendInfo;
    QByteArray unknown;
    QByteArray unknownExtendInfo;
    QVector<Commit> commits;
    while (reader.NextMember())
        if (IJsonParser* part = d->FindPart(reader))
            commits.append(part->ReadJson(reader));
        else if (reader.IsKey("version"))
            reader.ReadString(version);
        else if (reader.IsKey("extendInfo"))
            extendInfo = AppExtendInfoJson::Read(reader, d->extendInfo, unknownExtendInfo);
        else
            reader.KeepMember(unknown);
    return [this, version, extendInfo, unknown, unknownExtendInfo, commits] {
        d->version = version;
        d->extendInfo = extendInfo;
        d->unknown = unknown;
        d->unknownExtendInfo = unknownExtendInfo;
        for (const Commit& commit : commits)
            if (commit)
                commit();
        if (d->delivery)
            d->delivery->Fill(this);
        emit SigReplaced();
        emit RpaAppDataNotify::Instance()->SigReplaced(this);
    };
}
