#include "AppParamWidget_p.h"
#include "ParamField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbLabel.h>

#include <QDate>
#include <QFormLayout>

namespace
{

constexpr int LabelWidth = 160; // a longer label is elided, so that the fields keep their room

// A required text or choice without any value; numbers, dates and switches always have one to show.
bool IsMissing(const RpaParamItem& item)
{
    const QVariant value = item.GetEffectiveValue();
    return item.required && (!value.isValid() || value.toString().isEmpty());
}

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
        field->SetMissing(IsMissing(item));
        connect(field, &ParamField::SigEntered, this, [this, index](const QVariant& value) {
            if (paramData)
                paramData->SetValue(index, value);
        });
        QString label = item.label.isEmpty() ? item.name : item.label;
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
    fields.at(index)->ShowValue(item.GetEffectiveValue());
    fields.at(index)->SetMissing(IsMissing(item));
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
    return index >= 0 && paramData->SetValue(index, value);
}
