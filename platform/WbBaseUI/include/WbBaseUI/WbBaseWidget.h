// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QWidget>

// Base of the workstation's own widgets: paints the background that the style sheet gives it.
class WBBASEUI_EXPORT WbBaseWidget : public QWidget
{
    Q_OBJECT

public:
    explicit WbBaseWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

protected:
    void paintEvent(QPaintEvent* event) override;
};
