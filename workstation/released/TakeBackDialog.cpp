// SPDX-License-Identifier: Apache-2.0

#include "TakeBackDialog.h"

namespace
{
constexpr int leastHeight = 250;
constexpr int longestReason = 200;
} // namespace

TakeBackDialog::TakeBackDialog(const QString& title, const QString& act, const QString& consequence,
                               QWidget* parent)
    : FieldDialog(title, leastHeight, parent)
{
    setObjectName(QStringLiteral("TakeBackDialog"));
    SetField("editReason", QStringLiteral("原因（必填，会记入操作记录）"), QStringLiteral("原因"),
             QStringLiteral("例如：金额计算有误，修正后再上线"));
    SetIntro("labelConsequence", consequence);
    ui.edit->setMaxLength(longestReason);
    ui.buttonOk->setText(act);
}
