// SPDX-License-Identifier: Apache-2.0

#include "ColumnModel_p.h"
#include "PanelFrame_p.h"

#include <RpaAppTool/AppTableEditorWidget.h>
#include <RpaAppTool/IAppTableWidget.h>

class AppTableEditorWidget::Private
{
public:
    explicit Private(AppTableEditorWidget* owner)
        : frame(owner, QStringLiteral("表格列"), QStringLiteral("列"),
                QStringLiteral("还没有列。点击“+”添加一列，表格就会出现在界面上。")),
          model(new ColumnModel(frame.GetUndoStack(), owner))
    {
        frame.SetModel(model);
    }

    PanelFrame frame;
    ColumnModel* const model; // owned by the panel
};

AppTableEditorWidget::AppTableEditorWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    connect(&d->frame.GetPanel(), &RecordPanel::SigShrinkChanged, this,
            &AppTableEditorWidget::SigShrinkChanged);
}

AppTableEditorWidget::~AppTableEditorWidget() = default;

void AppTableEditorWidget::SetAppDataPtr(const RpaAppDataPtr& appData)
{
    d->frame.SetAppData(appData);
}

void AppTableEditorWidget::Init(RpaTableData* pageData)
{
    d->model->SetData(pageData);
    d->frame.Follow(pageData);
}

void AppTableEditorWidget::SetAppTableWidget(IAppTableWidget* widget)
{
    d->frame.SetShown(widget);
}

bool AppTableEditorWidget::IsShrink() const
{
    return d->frame.GetPanel().IsShrink();
}
