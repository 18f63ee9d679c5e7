// SPDX-License-Identifier: Apache-2.0

#include "PanelFrame_p.h"
#include "ToolItemModel_p.h"

#include <RpaAppTool/AppToolEditorWidget.h>
#include <RpaAppTool/IAppToolWidget.h>

class AppToolEditorWidget::Private
{
public:
    explicit Private(AppToolEditorWidget* owner)
        : frame(owner, QStringLiteral("工具"), QStringLiteral("工具"),
                QStringLiteral("还没有工具。点击“+”添加一个，使用者点它就会运行所选的流程。")),
          model(new ToolItemModel(frame.GetUndoStack(), owner))
    {
        frame.SetModel(model);
    }

    PanelFrame frame;
    ToolItemModel* const model; // owned by the panel
};

AppToolEditorWidget::AppToolEditorWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    connect(&d->frame.GetPanel(), &RecordPanel::SigShrinkChanged, this,
            &AppToolEditorWidget::SigShrinkChanged);
}

AppToolEditorWidget::~AppToolEditorWidget() = default;

void AppToolEditorWidget::SetAppDataPtr(const RpaAppDataPtr& appData)
{
    d->model->SetAppData(appData);
    d->frame.SetAppData(appData);
}

void AppToolEditorWidget::Init(RpaToolData* pageData)
{
    d->model->SetData(pageData);
    d->frame.Follow(pageData);
}

void AppToolEditorWidget::SetAppToolWidget(IAppToolWidget* widget)
{
    d->frame.SetShown(widget);
}

bool AppToolEditorWidget::IsShrink() const
{
    return d->frame.GetPanel().IsShrink();
}
