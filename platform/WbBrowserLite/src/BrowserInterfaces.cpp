// SPDX-License-Identifier: Apache-2.0

#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserEngine.h>
#include <WbBrowserLite/IBrowserPointer.h>
#include <WbBrowserLite/IBrowserWidget.h>

IBrowserBorderWindow::IBrowserBorderWindow(QWidget* parent) : QWidget(parent) {}

IBrowserBorderWindow::~IBrowserBorderWindow() = default;

IBrowserEngine::~IBrowserEngine() = default;

IBrowserPointer::IBrowserPointer(QObject* parent) : QObject(parent) {}

IBrowserPointer::~IBrowserPointer() = default;

IBrowserWidget::IBrowserWidget(QWidget* parent) : QWidget(parent) {}

IBrowserWidget::~IBrowserWidget() = default;

IBrowserPointer* IBrowserWidget::GetPointer()
{
    return nullptr;
}
