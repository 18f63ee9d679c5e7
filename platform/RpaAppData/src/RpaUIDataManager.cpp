// SPDX-License-Identifier: Apache-2.0

#include "UIPage_p.h"

#include <RpaAppData/RpaUIDataManager.h>
#include <WbFoundation/FreeNames.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <algorithm>
#include <vector>

class RpaUIDataManager::Private
{
public:
    using Page = std::unique_ptr<RpaUIData>;

    static Page Make(const QString& name) { return Page(new RpaUIData(name)); }
    static void WritePage(JsonWriter& writer, const RpaUIData& page);
    static void ReadPage(JsonReader& reader, RpaUIData& page);
    static std::vector<Page> ReadPages(JsonReader& reader);

    void Adopt(RpaUIDataManager& manager, Page page)
    {
        connect(page.get(), &RpaUIData::SigChanged, &manager, &RpaUIDataManager::SigChanged);
        connect(page.get(), &RpaUIData::SigResultsChanged, &manager, &RpaUIDataManager::SigResultsChanged);
        pages.push_back(std::move(page));
    }

    void Replace(RpaUIDataManager& manager, std::vector<Page> newPages);
    static void GiveFreeName(FreeNames& names, RpaUIData& page);

    std::vector<Page> pages;
    int active = -1;
    QByteArray unknown; // members written by a newer client
};

RpaUIDataManager::RpaUIDataManager(QObject* parent) : IJsonParser(parent), d(std::make_unique<Private>()) {}

RpaUIDataManager::~RpaUIDataManager() = default;

int RpaUIDataManager::GetCount() const
{
    return static_cast<int>(d->pages.size());
}

void RpaUIDataManager::GetAllUIName(QStringList& names) const
{
    names.clear();
    for (const auto& page : d->pages)
        names.append(page->GetName());
}

QString RpaUIDataManager::GetUIName(int index) const
{
    const RpaUIData* page = GetUIData(index);
    return page ? page->GetName() : QString();
}

RpaUIData* RpaUIDataManager::GetUIData(int index) const
{
    return index >= 0 && index < GetCount() ? d->pages[static_cast<size_t>(index)].get() : nullptr;
}

bool RpaUIDataManager::HasResults() const
{
    return std::any_of(d->pages.begin(), d->pages.end(), [](const Private::Page& page) {
        return page->GetParamData()->GetResultCount() > 0 || page->GetTableData()->HasResults();
    });
}

void RpaUIDataManager::KeepResults()
{
    for (const auto& page : d->pages) {
        page->GetParamData()->KeepResults();
        page->GetTableData()->KeepResults();
    }
}

void RpaUIDataManager::RestoreResults()
{
    for (const auto& page : d->pages) {
        page->GetParamData()->RestoreResults();
        page->GetTableData()->RestoreResults();
    }
}

bool RpaUIDataManager::IsExist(const QString& name) const
{
    return IsExistExceptIndex(name, -1);
}

bool RpaUIDataManager::IsExistExceptIndex(const QString& name, int index) const
{
    for (int i = 0; i < GetCount(); ++i)
        if (i != index && GetUIName(i) == name)
            return true;
    return false;
}

RpaUIData* RpaUIDataManager::AddUIData(const QString& name, const RpaToolItem& item)
{
    auto page = Private::Make(name);
    page->GetToolData()->InsertItem(-1, item);
    d->Adopt(*this, std::move(page));
    const int index = GetCount() - 1;
    emit SigUIAdded(index);
    if (d->active < 0)
        SetIndexActive(index);
    emit SigChanged();
    return GetUIData(index);
}

void RpaUIDataManager::DeleteUIData(int index)
{
    if (!GetUIData(index))
        return;
    emit SigUIAboutToBeDeleted(index);
    d->pages.erase(d->pages.begin() + index);
    const int before = d->active;
    if (index < d->active)
        --d->active;
    d->active = qMin(d->active, GetCount() - 1);
    emit SigUIDeleted(index);
    if (d->active != before)
        emit SigIndexActiveChanged(d->active);
    emit SigChanged();
    emit SigResultsChanged();
}

void RpaUIDataManager::UpdateUIData(int index, const QString& name)
{
    RpaUIData* page = GetUIData(index);
    if (!page || page->GetName() == name)
        return;
    page->d->name = name;
    emit SigUIRenamed(index);
    emit page->SigChanged();
}

void RpaUIDataManager::SwapUIData(int a, int b)
{
    if (!GetUIData(a) || !GetUIData(b) || a == b)
        return;
    std::swap(d->pages[static_cast<size_t>(a)], d->pages[static_cast<size_t>(b)]);
    emit SigUISwapped(a, b);
    if (d->active == a)
        SetIndexActive(b);
    else if (d->active == b)
        SetIndexActive(a);
    emit SigChanged();
}

void RpaUIDataManager::Clear()
{
    d->unknown.clear();
    d->Replace(*this, {});
}

int RpaUIDataManager::GetIndexActive() const
{
    return d->active;
}

void RpaUIDataManager::SetIndexActive(int index)
{
    if (index < -1 || index >= GetCount() || index == d->active)
        return;
    d->active = index;
    emit SigIndexActiveChanged(index);
}

void RpaUIDataManager::Private::WritePage(JsonWriter& writer, const RpaUIData& page)
{
    writer.BeginObject();
    writer.Member("name", page.GetName());
    writer.Key("tools");
    page.GetToolData()->WriteJson(writer);
    writer.Key("params");
    page.GetParamData()->WriteJson(writer);
    writer.Key("table");
    page.GetTableData()->WriteJson(writer);
    writer.RawMembers(page.d->unknown);
    writer.EndObject();
}

void RpaUIDataManager::Private::ReadPage(JsonReader& reader, RpaUIData& page)
{
    // Nobody sees the new page before the whole text has proved good, so its parts may be filled at once.
    const auto apply = [](const std::function<void()>& commit) {
        if (commit)
            commit();
    };
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(page.d->name);
        else if (reader.IsKey("tools"))
            apply(page.GetToolData()->ReadJson(reader));
        else if (reader.IsKey("params"))
            apply(page.GetParamData()->ReadJson(reader));
        else if (reader.IsKey("table"))
            apply(page.GetTableData()->ReadJson(reader));
        else
            reader.KeepMember(page.d->unknown);
}

std::vector<RpaUIDataManager::Private::Page> RpaUIDataManager::Private::ReadPages(JsonReader& reader)
{
    std::vector<Page> pages;
    if (!reader.EnterArray())
        return pages;
    while (reader.NextElement()) {
        if (!reader.EnterObject())
            continue;
        pages.push_back(Make(QString()));
        ReadPage(reader, *pages.back());
    }
    return pages;
}

void RpaUIDataManager::Private::GiveFreeName(FreeNames& names, RpaUIData& page)
{
    QString& name = page.d->name;
    if (name.trimmed().isEmpty())
        name = names.TakeNumbered(QStringLiteral("界面"));
    else if (!names.Take(name))
        name = names.TakeNumbered(name, 2);
}

void RpaUIDataManager::Private::Replace(RpaUIDataManager& manager, std::vector<Page> newPages)
{
    emit manager.SigAboutToReset();
    pages.clear();
    FreeNames names;
    for (Page& page : newPages) {
        GiveFreeName(names, *page);
        Adopt(manager, std::move(page));
    }
    active = pages.empty() ? -1 : 0;
    emit manager.SigReset();
    emit manager.SigIndexActiveChanged(active);
    emit manager.SigChanged();
    emit manager.SigResultsChanged();
}

void RpaUIDataManager::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    writer.Key("pages");
    writer.BeginArray();
    for (const auto& page : d->pages)
        Private::WritePage(writer, *page);
    writer.EndArray();
    writer.RawMembers(d->unknown);
    writer.EndObject();
}

IJsonParser::Commit RpaUIDataManager::ReadJson(JsonReader& reader)
{
    if (!reader.RequireObject(QStringLiteral("界面数据应为对象")))
        return {};
    // A commit must be copyable, pages are not.
    const auto pages = std::make_shared<std::vector<Private::Page>>();
    QByteArray unknown;
    while (reader.NextMember())
        if (reader.IsKey("pages"))
            *pages = Private::ReadPages(reader);
        else
            reader.KeepMember(unknown);
    return [this, pages, unknown] {
        d->unknown = unknown;
        d->Replace(*this, std::move(*pages));
    };
}
