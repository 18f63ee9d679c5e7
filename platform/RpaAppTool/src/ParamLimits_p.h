#pragma once

#include <QString>

struct RpaParamItem;

// What limits a parameter beyond its type, as the author reads and writes it in one cell: the choices
// ("甲，乙"), the range ("1~100", "1~", "~100") or the form of its text (the name of a known one, or an
// expression).
namespace ParamLimits
{
QString TextOf(const RpaParamItem& item);
// The reason when the text is refused; the item is as it was then.
QString Write(RpaParamItem& item, const QString& text);
// Whether a parameter of this type has any.
bool Has(const RpaParamItem& item);
} // namespace ParamLimits
