#pragma once

#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QPointer>

class QVBoxLayout;

// A frameless window with a thin border that can be dragged to resize it, around the popped-out browser.
class BrowserBorderWindow : public IBrowserBorderWindow
{
    Q_OBJECT

public:
    explicit BrowserBorderWindow(QWidget* parent = nullptr);

    void SetTarget(QWidget* target, const QRect& rect) override;
    void SetContent(IBrowserWidget* browser) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QVBoxLayout* const layout;
    QPointer<IBrowserWidget> content;
};
