// SPDX-License-Identifier: Apache-2.0

#include "ParamFields_p.h"

#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/IAppParamWidget.h>

namespace
{
RpaParamItem NewParam(const RpaParamData& params)
{
    RpaParamItem item;
    item.name = params.MakeFreeName(QStringLiteral("参数"));
    return item;
}
} // namespace

AppParamEditorWidget::AppParamEditorWidget(QWidget* parent)
    : AppEditorPanel(QStringLiteral("参数"), QStringLiteral("参数"),
                     QStringLiteral("还没有参数。点击“+”添加一个，使用者在运行前填写，流程可以读取。"),
                     parent),
      model(new RecordTable<RpaParamData>(QStringLiteral("参数"), ParamFields::GetAll(), NewParam,
                                          GetUndoStack(), this))
{
    SetModel(model);
}

void AppParamEditorWidget::Init(RpaParamData* pageData)
{
    model->SetData(pageData);
}

void AppParamEditorWidget::SetAppParamWidget(IAppParamWidget* widget)
{
    SetShown(widget);
}
