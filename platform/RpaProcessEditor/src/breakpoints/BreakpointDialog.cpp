// SPDX-License-Identifier: Apache-2.0

#include "BreakpointDialog_p.h"

#include <OxBase/DpiTool.h>

namespace
{
constexpr int termLength = 4000;
constexpr int everyArrival = 0; // row of the box; the others are those of RpaHitRule
} // namespace

BreakpointDialog::BreakpointDialog(const RpaBreakpoint& breakpoint, const QString& place, QWidget* parent)
    : WbBaseDialog(parent), asked(breakpoint)
{
    setObjectName(QStringLiteral("BreakpointDialog"));
    SetTitle(QStringLiteral("断点"));
    ui.setupUi(GetContentWidget());
    ui.labelPlace->setTextFormat(Qt::PlainText);
    ui.labelPlace->setText(place);
    ui.checkBoxEnabled->setChecked(asked.enabled);
    ui.lineEditCondition->setMaxLength(termLength);
    ui.lineEditCondition->setText(asked.condition);
    ui.lineEditLog->setMaxLength(termLength);
    ui.lineEditLog->setText(asked.logText);
    ui.comboBoxHits->setCurrentIndex(asked.hits > 0 ? int(asked.hitRule) + 1 : everyArrival);
    ui.spinBoxHits->setValue(qMax(1, asked.hits));
    ui.spinBoxHits->setEnabled(asked.hits > 0);
    GetContentWidget()->setMinimumWidth(DpiTool::ScaleDefault(420));
    ui.lineEditCondition->setFocus();
    connect(ui.comboBoxHits, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this](int row) { ui.spinBoxHits->setEnabled(row != everyArrival); });
    connect(ui.buttonOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui.buttonRemove, &QPushButton::clicked, this, [this] {
        removes = true;
        accept();
    });
}

RpaBreakpoint BreakpointDialog::Breakpoint() const
{
    RpaBreakpoint breakpoint = asked;
    breakpoint.enabled = ui.checkBoxEnabled->isChecked();
    breakpoint.condition = ui.lineEditCondition->text().trimmed();
    breakpoint.logText = ui.lineEditLog->text();
    const int row = ui.comboBoxHits->currentIndex();
    breakpoint.hits = row == everyArrival ? 0 : ui.spinBoxHits->value();
    breakpoint.hitRule = row == everyArrival ? RpaHitRule::FromThenOn : RpaHitRule(row - 1);
    return breakpoint;
}
