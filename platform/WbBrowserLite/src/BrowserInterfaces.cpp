#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserEngine.h>
#include <WbBrowserLite/IBrowserWidget.h>

IBrowserBorderWindow::IBrowserBorderWindow(QWidget* parent) : QWidget(parent) {}

IBrowserBorderWindow::~IBrowserBorderWindow() = default;

IBrowserEngine::~IBrowserEngine() = default;

IBrowserWidget::IBrowserWidget(QWidget* parent) : QWidget(parent) {}

IBrowserWidget::~IBrowserWidget() = default;
