// SPDX-License-Identifier: Apache-2.0

#include "NamedFields_p.h"

#include <RpaAppData/RpaTableData.h>
#include <RpaAppTool/AppTableEditorWidget.h>
#include <RpaAppTool/IAppTableWidget.h>

template <>
struct RecordsOf<RpaTableData>
{
    using Record = RpaTableColumn;
    static const QVector<Record>& Get(const RpaTableData& data) { return data.GetColumns(); }
    static bool Append(RpaTableData& data, const Record& column)
    {
        return data.InsertColumn(-1, column) >= 0;
    }
    static bool Set(RpaTableData& data, int index, const Record& column)
    {
        return data.SetColumn(index, column);
    }
    static bool Remove(RpaTableData& data, int index) { return data.RemoveColumn(index); }
    static bool Move(RpaTableData& data, int from, int to) { return data.MoveColumn(from, to); }
};

namespace
{
QString TypeIcon(RpaColumnType type)
{
    switch (type) {
    case RpaColumnType::Number:
        return QStringLiteral("param-number");
    case RpaColumnType::Date:
        return QStringLiteral("param-date");
    case RpaColumnType::Switch:
        return QStringLiteral("param-bool");
    case RpaColumnType::Text:
        break;
    }
    return QStringLiteral("param-text");
}

RpaTableColumn NewColumn(const RpaTableData& table)
{
    RpaTableColumn column;
    column.name = table.MakeFreeColumnName(QStringLiteral("列"));
    return column;
}
} // namespace

AppTableEditorWidget::AppTableEditorWidget(QWidget* parent)
    : AppEditorPanel(QStringLiteral("表格列"), QStringLiteral("列"),
                     QStringLiteral("还没有列。点击“+”添加一列，表格就会出现在界面上。"), parent),
      model(new RecordTable<RpaTableData>(
          QStringLiteral("列"),
          {NamedFields::Name<RpaTableColumn>(QStringLiteral("列名"), QStringLiteral("列名")),
           NamedFields::TypeOf<RpaTableColumn, RpaColumnType>(TypeIcon, [](RpaTableColumn&) {})},
          NewColumn, GetUndoStack(), this))
{
    SetModel(model);
}

void AppTableEditorWidget::Init(RpaTableData* pageData)
{
    model->SetData(pageData);
}

void AppTableEditorWidget::SetAppTableWidget(IAppTableWidget* widget)
{
    SetShown(widget);
}
