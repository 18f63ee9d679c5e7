// SPDX-License-Identifier: Apache-2.0

#include "AppParamWidget_p.h"
#include "FieldsArea_p.h"
#include "ParamField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbLabel.h>

#include <QDateTime>
#include <QGridLayout>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace
{

constexpr int labelWidth = 160; // a longer label is elided, so that the fields keep their room
constexpr int labelHeight = 30; // of a field's first line
constexpr int wideWidth = 560;  // from here on there is room for two columns
constexpr int gridColumns = 4;  // label and field, twice

WbLabel* LabelOf(const RpaParamItem& item)
{
    QString text = item.GetTitle();
    if (item.required && item.CanBeMissing())
        text += QStringLiteral(" *");
    auto* label = new WbLabel;
    const bool isTitle = item.type == RpaParamType::Group;
    const int width = DpiTool::ScaleDefault(isTitle ? wideWidth : labelWidth);
    label->setTextFormat(Qt::PlainText);
    label->setText(label->fontMetrics().elidedText(text, Qt::ElideRight, width));
    label->setToolTip(label->text() == text ? QString() : UIUtils::PlainToolTip(text));
    if (isTitle) {
        label->setObjectName(QStringLiteral("paramGroupTitle"));
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
    } else {
        label->setMinimumHeight(DpiTool::ScaleDefault(labelHeight));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    return label;
}

} // namespace

IAppParamWidget::IAppParamWidget(QWidget* parent) : QWidget(parent) {}

IAppParamWidget::~IAppParamWidget() = default;

IAppParamWidget* IAppParamWidget::CreateParamWidget(QWidget* parent)
{
    return new AppParamWidget(parent);
}

AppParamWidget::AppParamWidget(QWidget* parent) : IAppParamWidget(parent), area(new FieldsArea(this))
{
    setObjectName(QStringLiteral("AppParamWidget"));
    auto* form = new QWidget;
    grid = new QGridLayout(form);
    area->setWidget(form);
    form->setAutoFillBackground(false); // the page's own shows through
    area->viewport()->setAutoFillBackground(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);
    const int margin = DpiTool::ScaleDefault(4);
    grid->setContentsMargins(0, margin, 0, margin);
    grid->setHorizontalSpacing(DpiTool::ScaleDefault(12));
    grid->setVerticalSpacing(DpiTool::ScaleDefault(8));
    grid->setColumnStretch(1, 1);
}

void AppParamWidget::SetParamData(RpaParamData* pageData)
{
    if (paramData)
        paramData->disconnect(this);
    paramData = pageData;
    if (paramData) {
        connect(paramData, &RpaParamData::SigValueChanged, this, &AppParamWidget::ShowValue);
        connect(paramData, &RpaParamData::SigItemsChanged, this, &AppParamWidget::Rebuild);
        connect(paramData, &QObject::destroyed, this, &AppParamWidget::Rebuild);
    }
    Rebuild();
}

void AppParamWidget::Rebuild()
{
    for (const Row& row : qAsConst(rows)) {
        delete row.label;
        delete row.field;
    }
    rows.clear();
    const int count = paramData ? paramData->GetCount() : 0;
    int columns = 1;
    for (int index = 0; index < count; ++index) {
        const RpaParamItem item = paramData->GetItem(index);
        Row row{LabelOf(item), nullptr, columns};
        if (item.type == RpaParamType::Group) {
            columns = qMax(1, item.columns);
        } else {
            row.field = CreateField(index, item);
            row.label->setBuddy(row.field);
        }
        rows << row;
    }
    Place();
}

ParamField* AppParamWidget::CreateField(int index, const RpaParamItem& item)
{
    auto* field = new ParamField(item);
    connect(field, &ParamField::SigEntered, this, [this, index](const QVariant& value) {
        if (paramData)
            paramData->SetValue(index, value);
    });
    return field;
}

// Two columns only where the width has room for them.
void AppParamWidget::Place()
{
    isWide = width() >= DpiTool::ScaleDefault(wideWidth);
    grid->setRowStretch(usedLines, 0);
    int line = 0;
    int side = 0;
    bool hasTwo = false;
    for (const Row& row : qAsConst(rows)) {
        const bool isHalf = row.field && isWide && row.columns > 1;
        if (side > 0 && !isHalf) {
            side = 0;
            ++line;
        }
        if (!row.field) {
            grid->addWidget(row.label, line++, 0, 1, gridColumns);
            continue;
        }
        hasTwo = hasTwo || isHalf;
        grid->addWidget(row.label, line, 2 * side, Qt::AlignTop);
        grid->addWidget(row.field, line, 2 * side + 1, 1, isHalf ? 1 : gridColumns - 1);
        side = isHalf ? 1 - side : 0;
        line += side == 0 ? 1 : 0;
    }
    usedLines = line + 1;
    grid->setRowStretch(usedLines, 1);
    grid->setColumnStretch(gridColumns - 1, hasTwo ? 1 : 0);
}

void AppParamWidget::resizeEvent(QResizeEvent* event)
{
    IAppParamWidget::resizeEvent(event);
    if (isWide != (width() >= DpiTool::ScaleDefault(wideWidth)))
        Place();
}

void AppParamWidget::ShowValue(int index)
{
    if (paramData && index < rows.size() && rows.at(index).field)
        rows.at(index).field->ShowItem(paramData->GetItem(index));
}

QString AppParamWidget::DemandValues()
{
    QString first;
    ParamField* where = nullptr;
    for (int index = 0; paramData && index < rows.size(); ++index) {
        ParamField* const field = rows.at(index).field;
        if (!field)
            continue;
        const QString problem = paramData->GetItem(index).GetProblem();
        field->ShowProblem(problem);
        if (!where && !problem.isEmpty()) {
            first = problem;
            where = field;
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
    QTimer::singleShot(0, field, [field] {
        for (QWidget* above = field->parentWidget(); above; above = above->parentWidget())
            if (auto* scroll = qobject_cast<QScrollArea*>(above))
                scroll->ensureWidgetVisible(field);
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
    for (const RpaParamItem& item : items)
        if (item.type == RpaParamType::Password)
            names << item.name;
    return names;
}

QVariant AppParamWidget::GetParam(const QString& name) const
{
    const int index = paramData ? paramData->IndexOf(name) : -1;
    if (index < 0)
        return {};
    const QVariant value = paramData->GetItem(index).GetEffectiveValue();
    // As a process would write it, which knows moments as texts only.
    return value.userType() == QMetaType::QDateTime
               ? QVariant(value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")))
               : value;
}

bool AppParamWidget::SetParam(const QString& name, const QVariant& value)
{
    const int index = paramData ? paramData->IndexOf(name) : -1;
    return index >= 0 && paramData->SetResult(index, value);
}
