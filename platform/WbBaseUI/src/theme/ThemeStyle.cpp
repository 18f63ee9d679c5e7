// SPDX-License-Identifier: Apache-2.0

#include "ThemeStyle_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>

namespace
{
struct MetricRow
{
    QStyle::PixelMetric metric;
    int length;
};

constexpr MetricRow metricRows[] = {
    {QStyle::PM_SmallIconSize, 16},
    {QStyle::PM_ButtonIconSize, 16},
    {QStyle::PM_ToolBarIconSize, 20},
    {QStyle::PM_ListViewIconSize, 20},
    {QStyle::PM_TabBarIconSize, 16},
    {QStyle::PM_TabCloseIndicatorWidth, 16},
    {QStyle::PM_TabCloseIndicatorHeight, 16},
    {QStyle::PM_LayoutLeftMargin, 12},
    {QStyle::PM_LayoutTopMargin, 12},
    {QStyle::PM_LayoutRightMargin, 12},
    {QStyle::PM_LayoutBottomMargin, 12},
    {QStyle::PM_LayoutHorizontalSpacing, 8},
    {QStyle::PM_LayoutVerticalSpacing, 8},
    {QStyle::PM_HeaderDefaultSectionSizeHorizontal, 112},
    {QStyle::PM_HeaderDefaultSectionSizeVertical, 32},
    {QStyle::PM_TreeViewIndentation, 20},
    {QStyle::PM_SplitterWidth, 6},
};
} // namespace

// The style sheet is drawn over Fusion; other styles add frames and gradients of their own.
ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int ThemeStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    for (const MetricRow& row : metricRows)
        if (row.metric == metric)
            return DpiTool::ScaleDefault(row.length);
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const
{
    switch (hint) {
    // A combo box as a list below it rather than a menu over it: a menu measures every row.
    case SH_ComboBox_Popup:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_EtchDisabledText:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

// The desktop's own mark for clearing a field is dark on any background.
QIcon ThemeStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const
{
    return icon == SP_LineEditClearButton ? WbIcons::Get(QStringLiteral("close"))
                                          : QProxyStyle::standardIcon(icon, option, widget);
}
