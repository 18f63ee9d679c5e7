// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTabBar.h>

namespace
{
constexpr int widestTab = 240;
}

WbTabBar::WbTabBar(QWidget* parent) : QTabBar(parent)
{
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideRight);
}

QSize WbTabBar::minimumSizeHint() const
{
    return {0, QTabBar::minimumSizeHint().height()};
}

QSize WbTabBar::tabSizeHint(int index) const
{
    return QTabBar::tabSizeHint(index).boundedTo({DpiTool::ScaleDefault(widestTab), QWIDGETSIZE_MAX});
}

// The base class would rather cut every name to its first letter than let the tabs scroll.
QSize WbTabBar::minimumTabSizeHint(int index) const
{
    return tabSizeHint(index);
}
