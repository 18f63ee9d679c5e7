#include "AppParamWidget_p.h"
#include "ParamField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbLabel.h>

#include <QFormLayout>
#include <QScrollArea>
#include <QTimer>

namespace
{

constexpr int LabelWidth = 160; // a longer label is elided, so that the fields keep their room

} // namespace

IAppParamWidget::IAppParamWidget(QWidget* parent) : QWidget(parent) {}

IAppParamWidget::~IAppParamWidget() = default;

IAppParamWidget* IAppParamWidget::CreateParamWidget(QWidget* parent)
{
    return new AppParamWidget(parent);
}

AppParamWidget::AppParamWidget(QWidget* parent) : IAppParamWidget(parent), form(new QFormLayout(this))
{
    setObjectName(QStringLiteral("AppParamWidget"));
    const int margin = DpiTool::ScaleDefault(4);
    form->setContentsMargins(0, margin, 0, margin);
    form->setHorizontalSpacing(DpiTool::ScaleDefault(12));
    form->setVerticalSpacing(DpiTool::ScaleDefault(8));
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
}

AppParamWidget::~AppParamWidget() = default;

void AppParamWidget::SetParamData(RpaParamData* pageData)
{
    if (paramData)
        paramData->disconnect(this);
    paramData = pageData;
    if (paramData) {
        connect(paramData, &RpaParamData::SigValueChanged, this, &AppParamWidget::ShowValue);
        for (const auto signal :
             {&RpaParamData::SigInserted, &RpaParamData::SigItemChanged, &RpaParamData::SigRemoved})
            connect(paramData, signal, this, &AppParamWidget::Rebuild);
        connect(paramData, &RpaParamData::SigMoved, this, &AppParamWidget::Rebuild);
        connect(paramData, &RpaParamData::SigReset, this, &AppParamWidget::Rebuild);
        connect(paramData, &QObject::destroyed, this, &AppParamWidget::Rebuild);
    }
    Rebuild();
}

void AppParamWidget::Rebuild()
{
    while (form->rowCount() > 0)
        form->removeRow(0);
    fields.clear();
    const int count = paramData ? paramData->GetCount() : 0;
    for (int index = 0; index < count; ++index) {
        const RpaParamItem item = paramData->GetItem(index);
        auto* field = new ParamField(item);
        connect(field, &ParamField::SigEntered, this, [this, index](const QVariant& value) {
            if (paramData)
                paramData->SetValue(index, value);
        });
        QString label = item.GetTitle();
        if (item.required)
            label += QStringLiteral(" *");
        auto* labelWidget = new WbLabel;
        labelWidget->setText(
            labelWidget->fontMetrics().elidedText(label, Qt::ElideRight, DpiTool::ScaleDefault(LabelWidth)));
        labelWidget->setToolTip(labelWidget->text() == label ? QString() : UIUtils::PlainToolTip(label));
        labelWidget->setBuddy(field);
        form->addRow(labelWidget, field);
        fields << field;
    }
}

void AppParamWidget::ShowValue(int index)
{
    if (!paramData || index >= fields.size())
        return;
    const RpaParamItem item = paramData->GetItem(index);
    fields.at(index)->ShowItem(item);
}

QString AppParamWidget::DemandValues()
{
    QString first;
    ParamField* where = nullptr;
    for (int index = 0; paramData && index < fields.size(); ++index) {
        const QString problem = paramData->GetItem(index).GetProblem();
        fields.at(index)->ShowProblem(problem);
        if (!where && !problem.isEmpty()) {
            first = problem;
            where = fields.at(index);
        }
    }
    if (where) {
        emit SigDemanded();
        ShowField(where);
    }
    return first;
}

void AppParamWidget::ShowField(ParamField* field)
{
    field->TakeCursor();
    // The text below the field has just been given its room.
    QTimer::singleShot(0, field, [this, field] {
        for (QWidget* above = parentWidget(); above; above = above->parentWidget()) {
            if (auto* area = qobject_cast<QScrollArea*>(above))
                area->ensureWidgetVisible(field);
        }
    });
}

QStringList AppParamWidget::GetParamNames() const
{
    return paramData ? paramData->GetNames() : QStringList();
}

QStringList AppParamWidget::GetSecretParamNames() const
{
    QStringList names;
    const QVector<RpaParamItem> items = paramData ? paramData->GetItems() : QVector<RpaParamItem>();
    for (const RpaParamItem& item : items) {
        if (item.type == RpaParamType::Password)
            names << item.name;
    }
    return names;
}

QVariant AppParamWidget::GetParam(const QString& name) const
{
    const int index = paramData ? paramData->IndexOf(name) : -1;
    return index < 0 ? QVariant() : paramData->GetItem(index).GetEffectiveValue();
}

bool AppParamWidget::SetParam(const QString& name, const QVariant& value)
{
    const int index = paramData ? paramData->IndexOf(name) : -1;
    return index >= 0 && paramData->SetResult(index, value);
}
