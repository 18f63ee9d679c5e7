// SPDX-License-Identifier: Apache-2.0

#include "ValueEdit_p.h"
#include "ValueField_p.h"
#include "ValuePicker_p.h"
#include "ValueText_p.h"

#include <WbBaseUI/WbFocusForward.h>

#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

ValueField::ValueField(const FieldOffers& fieldOffers, const QString& title, QWidget* parent)
    : QWidget(parent), variables(fieldOffers.variables), edit(new ValueEdit(ValueEdit::Lines::One))
{
    edit->setObjectName(QStringLiteral("valueEdit"));
    edit->setAccessibleName(title);
    edit->setPlaceholderText(QStringLiteral("文本、数字或变量"));
    auto* picker = new ValuePicker(fieldOffers, title, this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(edit, 1);
    layout->addWidget(picker->MakeButton());
    new WbFocusForward(this, edit);
    connect(edit, &ValueEdit::SigEdited, this, &ValueField::SigEdited);
    connect(edit, &ValueEdit::SigFinished, this, &ValueField::Finish);
    connect(edit, &ValueEdit::SigPickAsked, picker, &ValuePicker::Open);
    connect(picker, &ValuePicker::SigPicked, this, [this](const RpaValuePart& part) {
        edit->Insert(part);
        edit->setFocus();
    });
}

void ValueField::SetValue(const RpaValue& shown)
{
    value = shown;
    edit->SetParts(ValueText::Shown(value, variables));
    shownParts = edit->Parts();
}

RpaValue ValueField::Value() const
{
    const QVector<RpaValuePart> parts = edit->Parts();
    if (parts == shownParts)
        return value;
    RpaValue meant = ValueText::Meant(parts, variables);
    meant.isText = value.isText && meant.Is(RpaValuePart::Kind::Code);
    return meant;
}

// The name of a variable that was typed becomes the variable.
void ValueField::Finish()
{
    const RpaValue typed = Value();
    if (ValueText::Shown(typed, variables) != edit->Parts())
        SetValue(typed);
    emit SigFinished();
}

void ValueField::SetMissing(bool missing)
{
    if (edit->property("hasError").toBool() == missing)
        return;
    edit->setProperty("hasError", missing);
    edit->style()->unpolish(edit); // the style sheet reads properties only then
    edit->style()->polish(edit);
}
