// SPDX-License-Identifier: Apache-2.0

#include "TypedValue_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaPageEdits.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaSavedState.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <WbFoundation/JsonWriter.h>

#include <QTimer>

#include <algorithm>
#include <optional>

namespace
{
constexpr int pauseMs = 200; // the pages are compared for nothing while somebody types

using Row = QVector<QVariant>;

// What a page holds of the app.
struct PageContent
{
    QByteArray json; // of all but the table
    QVector<RpaTableColumn> columns;
    QVector<Row> rows; // as they are stored: not what runs wrote
};

PageContent ContentOf(const RpaUIData& page)
{
    JsonWriter writer;
    writer.BeginArray();
    writer.String(page.GetName());
    page.GetToolData()->WriteJson(writer);
    page.GetParamData()->WriteJson(writer);
    writer.EndArray();
    const RpaTableData::Content table = page.GetTableData()->GetContent();
    return {writer.Take(), table.columns, table.hasResults ? table.initialRows : table.rows};
}

bool IsSamePage(const PageContent& one, const PageContent& other)
{
    return one.json == other.json && one.columns == other.columns && TypedValue::IsSame(one.rows, other.rows);
}
} // namespace

class RpaPageEdits::Private
{
public:
    using Pages = QVector<PageContent>;

    Pages GetPages() const
    {
        Pages pages;
        const RpaUIDataManager& manager = *app->GetUIDataManager();
        for (int index = 0; index < manager.GetCount(); ++index)
            pages << ContentOf(*manager.GetUIData(index));
        return pages;
    }

    RpaAppData* app;
    RpaSavedState* savedState;
    std::optional<Pages> saved = {}; // last; nothing while that is not known
};

RpaPageEdits* RpaPageEdits::Of(RpaAppData* app)
{
    auto* edits = app->findChild<RpaPageEdits*>(QString(), Qt::FindDirectChildrenOnly);
    return edits ? edits : new RpaPageEdits(app); // the app data owns it
}

RpaPageEdits::RpaPageEdits(RpaAppData* appData)
    : QObject(appData), d(new Private{appData, RpaSavedState::Of(appData)}), pause(new QTimer(this))
{
    pause->setSingleShot(true);
    pause->setInterval(pauseMs);
    connect(pause, &QTimer::timeout, this, &RpaPageEdits::Compare);
    connect(d->savedState, &RpaSavedState::SigSaved, this, &RpaPageEdits::Remember);
    if (!appData->GetModified())
        Remember();
}

RpaPageEdits::~RpaPageEdits() = default;

void RpaPageEdits::Edited()
{
    d->savedState->Edited(this);
    pause->start();
}

void RpaPageEdits::Remember()
{
    pause->stop();
    d->saved = d->GetPages();
}

void RpaPageEdits::Compare()
{
    const Private::Pages now = d->GetPages();
    if (d->saved && std::equal(now.begin(), now.end(), d->saved->begin(), d->saved->end(), IsSamePage))
        d->savedState->TakenBack(this);
}
