// SPDX-License-Identifier: Apache-2.0

#include "TakenAlong.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaProcess.h>

namespace
{
constexpr int longestShown = 40;
constexpr int shownCells = 4;

QString Shown(const QVariant& value)
{
    QString text = RpaParamItem::GetText(value);
    if (value.userType() == QMetaType::Bool)
        text = value.toBool() ? QStringLiteral("开") : QStringLiteral("关");
    text = text.simplified();
    return text.size() > longestShown ? text.left(longestShown) + QChar(0x2026) : text;
}

void AddValues(QVector<TakenAlong>& all, const RpaUIData& page, int pageIndex)
{
    const QVector<RpaParamItem>& items = page.GetParamData()->GetItems();
    for (int index = 0; index < items.size(); ++index) {
        const RpaParamItem& item = items.at(index);
        const QVariant value = item.isResult ? item.initial : item.value;
        const bool isStored = value.isValid() && item.type != RpaParamType::Password && !item.IsOutput();
        if (!isStored || value == item.defaultValue || RpaParamItem::GetText(value).isEmpty())
            continue;
        TakenAlong entry;
        entry.where = QStringLiteral("界面“%1”的参数“%2”").arg(page.GetName(), item.GetTitle());
        entry.what = Shown(value);
        entry.page = pageIndex;
        entry.param = index;
        all << entry;
    }
}

void AddRows(QVector<TakenAlong>& all, const RpaUIData& page, int pageIndex)
{
    const RpaTableData& table = *page.GetTableData();
    const RpaTableData::Content content = table.GetContent();
    const auto& rows = content.hasResults ? content.initialRows : content.rows;
    if (rows.isEmpty())
        return;
    QStringList cells;
    for (const QVariant& cell : rows.first().mid(0, shownCells))
        cells << Shown(cell);
    TakenAlong entry;
    entry.kind = TakenAlong::Kind::Rows;
    entry.where = QStringLiteral("界面“%1”的表格").arg(page.GetName());
    entry.what = QStringLiteral("%1 行：%2").arg(rows.size()).arg(cells.join(QStringLiteral("，")));
    entry.page = pageIndex;
    all << entry;
}

bool IsPasswordField(const RpaAppData& app, const QString& elementId)
{
    return app.GetHtmlNodeManager()
               ->FindNode(elementId)
               .attributes.value(QStringLiteral("type"))
               .compare(QLatin1String("password"), Qt::CaseInsensitive) == 0;
}

bool IsNamedPassword(const RpaArgumentInfo& argument)
{
    return argument.title.contains(QStringLiteral("密码")) ||
           argument.name.contains(QLatin1String("password"), Qt::CaseInsensitive);
}

void AddPasswords(QVector<TakenAlong>& all, const RpaAppData& app, const RpaProcess& process)
{
    int number = 0;
    process.ForEach([&](const RpaStatementNode& statement) {
        ++number;
        const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(statement.GetCommand());
        if (!command)
            return;
        const QMap<QString, QString>& texts = statement.GetValues().arguments;
        const bool fillsPassword = IsPasswordField(app, texts.value(QStringLiteral("element")));
        for (const RpaArgumentInfo& argument : command->arguments) {
            const QString text = texts.value(argument.name);
            const bool isSecret = fillsPassword || IsNamedPassword(argument);
            if (argument.type != RpaArgumentType::Text || !isSecret || text.isEmpty() ||
                text.startsWith(QLatin1Char('=')))
                continue;
            TakenAlong entry;
            entry.kind = TakenAlong::Kind::Password;
            entry.where = QStringLiteral("流程“%1”第 %2 步“%3”的%4")
                              .arg(process.GetName())
                              .arg(number)
                              .arg(command->title, argument.title);
            entry.what = QStringLiteral("密码 ••••••"); // it is shown to nobody
            entry.process = process.GetName();
            entry.statement = statement.GetId();
            entry.argument = argument.name;
            all << entry;
        }
    });
}

bool RunsProcess(const RpaUIData& page, const QString& process)
{
    for (int tool = 0; tool < page.GetToolData()->GetCount(); ++tool)
        if (page.GetToolData()->GetItem(tool).processName == process)
            return true;
    return false;
}

// A process reads the parameters of the page that it was started from, so each such page gets one.
void AddPasswordParam(RpaUIDataManager& pages, const QString& process, const QString& name)
{
    bool isAsked = false;
    for (int index = 0; index < pages.GetCount(); ++index) {
        // Called by another process it may run from any page.
        const bool isLast = index + 1 == pages.GetCount();
        RpaUIData* const page = pages.GetUIData(index);
        if (!RunsProcess(*page, process) && !(isLast && !isAsked))
            continue;
        RpaParamItem item;
        item.name = name;
        item.type = RpaParamType::Password;
        item.required = true;
        page->GetParamData()->InsertItem(-1, item);
        isAsked = true;
    }
}

QString FreeName(const RpaUIDataManager& pages)
{
    for (int number = 1;; ++number) {
        QString name = QStringLiteral("密码%1").arg(number);
        bool isFree = true;
        for (int index = 0; index < pages.GetCount(); ++index)
            isFree = isFree && pages.GetUIData(index)->GetParamData()->IndexOf(name) < 0;
        if (isFree)
            return name;
    }
}
} // namespace

QVector<TakenAlong> TakenAlong::Of(const RpaAppData& app)
{
    QVector<TakenAlong> all;
    const ProcessDataManager& processes = *app.GetProcessDataManager();
    for (int index = 0; index < processes.GetCount(); ++index)
        AddPasswords(all, app, *processes.GetProcess(index));
    const RpaUIDataManager& pages = *app.GetUIDataManager();
    for (int index = 0; index < pages.GetCount(); ++index) {
        AddValues(all, *pages.GetUIData(index), index);
        AddRows(all, *pages.GetUIData(index), index);
    }
    return all;
}

void TakenAlong::TakeOut(RpaAppData& app) const
{
    RpaUIDataManager& pages = *app.GetUIDataManager();
    RpaUIData* const on = pages.GetUIData(page);
    RpaProcess* const steps = app.GetProcessDataManager()->FindProcess(process);
    if (kind == Kind::Value && on) {
        on->GetParamData()->SetValue(param, QVariant());
    } else if (kind == Kind::Rows && on) {
        on->GetTableData()->RestoreResults();
        on->GetTableData()->ClearRows();
    } else if (kind == Kind::Password && steps) {
        const QString name = FreeName(pages);
        AddPasswordParam(pages, process, name);
        steps->SetArgument(statement, argument, QStringLiteral("=rpa.get_param(\"%1\")").arg(name));
    }
}
