// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

struct RpaParamItem;

// What limits a parameter beyond its type, as the author reads and writes it in one cell: the choices
// ("甲，乙"), the range ("1~100", "1~", "~100") and step of a slider ("0~1，步长 0.1"), the form of its text
// (the name of a known one, or an expression), the endings of files ("xlsx，csv"), the lines that are
// seen at once ("6 行") or the columns of a group ("两列").
namespace ParamLimits
{
QString TextOf(const RpaParamItem& item);
// The reason when the text is refused; the item is as it was then.
QString Write(RpaParamItem& item, const QString& text);
// Texts that the author types into one cell, without repetitions.
QStringList SplitTexts(QString text);
// Whether a parameter of this type has any.
bool Has(const RpaParamItem& item);
} // namespace ParamLimits
