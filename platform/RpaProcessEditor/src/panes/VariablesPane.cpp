// SPDX-License-Identifier: Apache-2.0

#include "ValueModel_p.h"
#include "VariablesPane_p.h"
#include "WhyEmpty_p.h"

#include <WbBaseUI/WbScaledForm.h>

VariablesPane::VariablesPane(DebugFocus* debugFocus, QWidget* parent)
    : QWidget(parent), focus(debugFocus), model(new ValueModel(debugFocus->Source(), this))
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    filter.setSourceModel(model);
    ui.variableView->OpenAtFirst(QStringLiteral("局部变量"));
    ui.variableView->OpenAtFirst(QStringLiteral("全局变量"));
    ui.variableView->OpenAtFirst(QStringLiteral("界面参数"));
    ui.variableView->setModel(&filter);
    connect(focus, &DebugFocus::SigChanged, this, &VariablesPane::Ask);
    connect(focus->Source(), &DebugSource::SigAnswer, this, &VariablesPane::SlotAnswer);
    connect(ui.lineEditSearch, &QLineEdit::textChanged, &filter, &ValueFilter::SetText);
    connect(ui.variableView, &ValueView::SigMoreAsked, this,
            [this](const QModelIndex& index) { model->LoadMore(filter.mapToSource(index)); });
    connect(model, &ValueModel::SigRefused, this, [this](const QString& name, const QString& why) {
        ui.labelProblem->SetText(QStringLiteral("“%1”：%2").arg(name, why));
        ui.labelProblem->show();
    });
    connect(model, &ValueModel::SigValueSet, this, [this] {
        Ask(); // other names may stand for the same value
        emit SigValueSet();
    });
    Ask();
}

void VariablesPane::Ask()
{
    ui.labelProblem->hide();
    request = focus->Source()->AskScopes(focus->GetFrame());
    if (request > 0)
        return; // what is shown stays until the answer is there
    model->SetRoots({}, 0);
    ui.labelWhy->setText(WhyEmpty(focus->Source()->GetState(), QStringLiteral("变量")));
    ui.stack->setCurrentWidget(ui.pageWhy);
}

void VariablesPane::SlotAnswer(const RpaDebugAnswer& answer)
{
    if (request == 0 || answer.request != request)
        return;
    request = 0;
    model->SetRoots(answer.values, focus->GetFrame());
    ui.labelWhy->setText(answer.error);
    ui.stack->setCurrentWidget(answer.ok ? ui.pageValues : ui.pageWhy);
}
