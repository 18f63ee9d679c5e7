// SPDX-License-Identifier: Apache-2.0

#include "StyleRefresh_p.h"

#include <QStyle>
#include <QWidget>

void RefreshStyle(QWidget* widget)
{
    // A widget that was never shown is polished later anyway, with the properties it has then.
    if (!widget->testAttribute(Qt::WA_WState_Polished))
        return;
    QStyle* style = widget->style();
    style->unpolish(widget);
    style->polish(widget);
    widget->updateGeometry();
    widget->update();
}
