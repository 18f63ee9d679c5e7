// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QRect>
#include <QWidget>

class IBrowserWidget;

// The window that holds the browser while it is popped out.
class WBBROWSERLITE_EXPORT IBrowserBorderWindow : public QWidget
{
    Q_OBJECT

public:
    explicit IBrowserBorderWindow(QWidget* parent = nullptr);
    ~IBrowserBorderWindow() override;

    // The native window to follow and the part of it to cover; null and an empty rectangle for none.
    virtual void SetTarget(QWidget* target, const QRect& rect) = 0;

    // Takes the browser into the window.
    virtual void SetContent(IBrowserWidget* browser) = 0;
};
