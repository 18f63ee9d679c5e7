// SPDX-License-Identifier: Apache-2.0

#include "NamedFields_p.h"

#include <RpaAppData/RpaToolData.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <RpaProcessData/ProcessDataManager.h>

namespace
{
using ToolField = RecordField<RpaToolItem>;
using Choices = QVector<RecordModel::Choice>;

ToolField TextField()
{
    const auto write = [](RpaToolItem& item, const QVariant& value, const QVector<RpaToolItem>&) {
        constexpr int longest = 20;
        const QString text = value.toString().trimmed();
        if (text.isEmpty())
            return QStringLiteral("工具文字不能为空");
        if (text.size() > longest)
            return QStringLiteral("工具文字不超过%1个字符").arg(longest);
        item.text = text;
        return QString();
    };
    return {QStringLiteral("文字"),
            [](const RpaToolItem& item, int role) { return NamedFields::ShowText(item.text, role); }, write};
}

// Pictures that a tool may have, with what the author reads.
Choices Icons(const RpaToolItem&)
{
    const auto icon = [](const QString& title, const QString& name) {
        return RecordModel::Choice{title, name, name};
    };
    return {icon(QStringLiteral("运行"), QStringLiteral("run")),
            icon(QStringLiteral("表格"), QStringLiteral("table")),
            icon(QStringLiteral("文件"), QStringLiteral("file")),
            icon(QStringLiteral("网页"), QStringLiteral("web")),
            icon(QStringLiteral("下载"), QStringLiteral("download")),
            icon(QStringLiteral("上传"), QStringLiteral("upload")),
            icon(QStringLiteral("搜索"), QStringLiteral("search")),
            icon(QStringLiteral("刷新"), QStringLiteral("refresh")),
            icon(QStringLiteral("消息"), QStringLiteral("message")),
            icon(QStringLiteral("时间"), QStringLiteral("clock"))};
}

ToolField IconField()
{
    const auto show = [](const RpaToolItem& item, int role) -> QVariant {
        const QString name = item.icon.isEmpty() ? QStringLiteral("run") : item.icon;
        if (role == Qt::DecorationRole)
            return WbIcons::Get(name);
        return role == Qt::EditRole || role == Qt::AccessibleTextRole ? QVariant(name) : QVariant();
    };
    const auto write = [](RpaToolItem& item, const QVariant& value, const QVector<RpaToolItem>&) {
        item.icon = value.toString().trimmed();
        return QString();
    };
    return {QStringLiteral("图标"), show, write, Icons, {64, 64, true}};
}

ToolField ProcessField(const std::function<RpaAppDataPtr()>& appData)
{
    const auto show = [](const RpaToolItem& item, int role) -> QVariant {
        if (role == Qt::DisplayRole && item.processName.isEmpty())
            return QStringLiteral("（未选择）");
        return NamedFields::ShowText(item.processName, role);
    };
    const auto write = [](RpaToolItem& item, const QVariant& value, const QVector<RpaToolItem>&) {
        item.processName = value.toString();
        return QString();
    };
    const auto choices = [appData](const RpaToolItem&) {
        const RpaAppDataPtr app = appData();
        Choices all;
        const QStringList names = app ? app->GetProcessDataManager()->GetProcessNames() : QStringList();
        for (const QString& name : names)
            all << RecordModel::Choice{name, name};
        return all;
    };
    return {QStringLiteral("流程"), show, write, choices};
}
} // namespace

AppToolEditorWidget::AppToolEditorWidget(QWidget* parent)
    : AppEditorPanel(QStringLiteral("工具"), QStringLiteral("工具"),
                     QStringLiteral("还没有工具。点击“+”添加一个，使用者点它就会运行所选的流程。"), parent),
      model(new RecordTable<RpaToolData>(
          QStringLiteral("工具"), {TextField(), IconField(), ProcessField([this] { return GetAppData(); })},
          [this](const RpaToolData& tools) {
              RpaToolItem item;
              item.text = QStringLiteral("工具%1").arg(tools.GetCount() + 1);
              if (const RpaAppDataPtr app = GetAppData())
                  item.processName = app->GetProcessDataManager()->GetProcessNameFirst();
              return item;
          },
          GetUndoStack(), this))
{
    SetModel(model);
}

void AppToolEditorWidget::Init(RpaToolData* pageData)
{
    model->SetData(pageData);
}

void AppToolEditorWidget::SetAppToolWidget(IAppToolWidget* widget)
{
    SetShown(widget);
}
