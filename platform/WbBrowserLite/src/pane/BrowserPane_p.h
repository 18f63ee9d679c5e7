// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BrowserDriver_p.h"
#include "BrowserPointer_p.h"

#include <WbBrowserLite/IBrowserWidget.h>

class BrowserNotice;
class BrowserPage;
class BrowserToolBar;
class QStackedWidget;
class QWebEngineProfile;
class QWebEngineView;

// The embedded browser with a web engine, which starts with the first page.
class BrowserPane : public IBrowserWidget
{
    Q_OBJECT

public:
    explicit BrowserPane(QWidget* parent);
    ~BrowserPane() override;

    void InitToolBar() override;
    void SetEmbedded(bool embedded) override;
    void Reset() override;
    IBrowserEngine* GetBrowserEngine() override { return driver; }
    IBrowserPointer* GetPointer() override { return pointer; }

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void actionEvent(QActionEvent* event) override;

private:
    void AddKey(const QKeySequence& keys, void (BrowserPane::*act)());
    void Back();
    void Forward();
    void Reload();
    void StopLoading();
    void FocusAddress();

    void Load(const QUrl& url);
    void SlotAddressEntered(const QString& text);
    void SlotLoadStarted();
    void SlotLoadFinished(bool ok);
    void SlotPageDied();
    void SlotPageClosed();
    void ShowPageBefore();
    void ShowMenu(const QPoint& position);
    bool StartEngine();
    void DropEngine(const QString& reason);
    void ConnectPage();
    void ShowFailure(const QString& reason);
    void ShowPageOrFailure();
    void UpdateHistory();
    bool IsPoppedOut() const;
    void FitWidth();

    BrowserDriver* const driver;
    BrowserPointer* const pointer;
    BrowserToolBar* toolBar = nullptr;
    QStackedWidget* const stack;
    BrowserNotice* const notice;
    QWebEngineView* view = nullptr;
    BrowserPage* page = nullptr;
    QWebEngineProfile* profile = nullptr;
    bool stopped = false; // by the user: that is no failure
};
