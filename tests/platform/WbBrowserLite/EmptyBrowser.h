// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/IBrowserWidget.h>

// A browser that shows nothing; only its place matters.
class EmptyBrowser : public IBrowserWidget
{
public:
    using IBrowserWidget::IBrowserWidget;

    void InitToolBar() override {}
    void SetEmbedded(bool) override {}
    void Reset() override {}
    IBrowserEngine* GetBrowserEngine() override { return nullptr; }
};
