// SPDX-License-Identifier: Apache-2.0

#include "PanelFrame_p.h"
#include "ParamItemModel_p.h"

#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/IAppParamWidget.h>

class AppParamEditorWidget::Private
{
public:
    explicit Private(AppParamEditorWidget* owner)
        : frame(owner, QStringLiteral("参数"), QStringLiteral("参数"),
                QStringLiteral("还没有参数。点击“+”添加一个，使用者在运行前填写，流程可以读取。")),
          model(new ParamItemModel(frame.GetUndoStack(), owner))
    {
        frame.SetModel(model);
    }

    PanelFrame frame;
    ParamItemModel* const model; // owned by the panel
};

AppParamEditorWidget::AppParamEditorWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    connect(&d->frame.GetPanel(), &RecordPanel::SigShrinkChanged, this,
            &AppParamEditorWidget::SigShrinkChanged);
}

AppParamEditorWidget::~AppParamEditorWidget() = default;

void AppParamEditorWidget::SetAppDataPtr(const RpaAppDataPtr& appData)
{
    d->frame.SetAppData(appData);
}

void AppParamEditorWidget::Init(RpaParamData* pageData)
{
    d->model->SetData(pageData);
    d->frame.Follow(pageData);
}

void AppParamEditorWidget::SetAppParamWidget(IAppParamWidget* widget)
{
    d->frame.SetShown(widget);
}

bool AppParamEditorWidget::IsShrink() const
{
    return d->frame.GetPanel().IsShrink();
}
