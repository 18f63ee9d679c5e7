// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QTabBar>

// A row of tabs whose names stay readable: tabs that do not fit scroll instead of losing their names, and
// only a very long name is shortened. It never makes its window wide.
class WBBASEUI_EXPORT WbTabBar : public QTabBar
{
    Q_OBJECT

public:
    explicit WbTabBar(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
};
