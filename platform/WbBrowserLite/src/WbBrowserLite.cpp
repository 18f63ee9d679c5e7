// SPDX-License-Identifier: Apache-2.0

#include "BrowserBorderWindow_p.h"
#include "BrowserEnvironment_p.h"
#include "BuiltInBrowser_p.h"

#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QCoreApplication>

#include <utility>

WbBrowserLite::WbBrowserLite() = default;

WbBrowserLite::~WbBrowserLite() = default;

WbBrowserLite* WbBrowserLite::Instance()
{
    static WbBrowserLite instance;
    return &instance;
}

void WbBrowserLite::PrepareApplication()
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    BrowserEnvironment::RefuseDebuggers();
}

QString WbBrowserLite::GetEngineName()
{
    return BuiltInEngineName();
}

IBrowserWidget* WbBrowserLite::CreateBrowserWidget(QWidget* parent)
{
    IBrowserWidget* browser = browserFactory ? browserFactory(parent) : CreateBuiltInBrowser(parent);
    if (browser) {
        newest = browser;
        emit SigBrowserCreated(browser);
    }
    return browser;
}

IBrowserWidget* WbBrowserLite::GetBrowserWidget() const
{
    return newest;
}

void WbBrowserLite::SetBrowserFactory(Factory factory)
{
    browserFactory = std::move(factory);
}

IBrowserBorderWindow* WbBrowserLite::CreateBrowserEmbed(QWidget* parent)
{
    return new BrowserBorderWindow(parent);
}
