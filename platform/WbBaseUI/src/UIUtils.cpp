#include <WbBaseUI/UIUtils.h>

void UIUtils::SetForeground(QWidget* window, bool activate)
{
    if (!window) {
        return;
    }
    QWidget* top = window->window();
    if (top->isMinimized()) {
        top->setWindowState(top->windowState() & ~Qt::WindowMinimized);
    }
    top->show();
    top->raise();
    if (activate) {
        top->activateWindow();
    }
}
