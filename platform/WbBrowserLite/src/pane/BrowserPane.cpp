// SPDX-License-Identifier: Apache-2.0

#include "BrowserAddress_p.h"
#include "BrowserEnvironment_p.h"
#include "BrowserNotice_p.h"
#include "BrowserPage_p.h"
#include "BrowserPane_p.h"
#include "BrowserSandbox_p.h"
#include "BrowserToolBar_p.h"
#include "BrowserWorlds_p.h"
#include "BuiltInBrowser_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QActionEvent>
#include <QMenu>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWebEngineHistory>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <QtWebEngineWidgetsVersion>

#include <utility>

namespace
{
constexpr QSize usualPaneSize(420, 480);
constexpr int leastPaneWidth = 300;
constexpr int leastPaneWidthInWindow = 240;
} // namespace

IBrowserWidget* CreateBuiltInBrowser(QWidget* parent)
{
    return new BrowserPane(parent);
}

QString BuiltInEngineName()
{
    return QStringLiteral("Qt WebEngine " QTWEBENGINEWIDGETS_VERSION_STR);
}

BrowserPane::BrowserPane(QWidget* parent)
    : IBrowserWidget(parent), driver(new BrowserDriver(this)), pointer(new BrowserPointer(this)),
      stack(new QStackedWidget), notice(new BrowserNotice)
{
    setObjectName(QStringLiteral("browserPane"));
    DpiFollower::Follow(this, [this] { FitWidth(); });
    stack->addWidget(notice);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(stack, 1);
    connect(driver, &BrowserDriver::SigOpen, this, &BrowserPane::Load);
    connect(notice, &BrowserNotice::SigRetry, this, &BrowserPane::Reload);
}

BrowserPane::~BrowserPane()
{
    DropEngine(QStringLiteral("浏览器已经关闭"));
}

QSize BrowserPane::sizeHint() const
{
    return {DpiTool::ScaleDefault(usualPaneSize.width()), DpiTool::ScaleDefault(usualPaneSize.height())};
}

void BrowserPane::InitToolBar()
{
    if (toolBar)
        return;
    toolBar = new BrowserToolBar;
    qobject_cast<QVBoxLayout*>(layout())->insertWidget(0, toolBar);
    connect(toolBar, &BrowserToolBar::SigAddressEntered, this, &BrowserPane::SlotAddressEntered);
    connect(toolBar, &BrowserToolBar::SigBack, this, &BrowserPane::Back);
    connect(toolBar, &BrowserToolBar::SigForward, this, &BrowserPane::Forward);
    connect(toolBar, &BrowserToolBar::SigReload, this, &BrowserPane::Reload);
    connect(toolBar, &BrowserToolBar::SigStop, this, &BrowserPane::StopLoading);
    connect(toolBar, &BrowserToolBar::SigFold, this, &BrowserPane::SigFold);
    connect(toolBar, &BrowserToolBar::SigPopup, this, &BrowserPane::SigPopup);
    AddKey(QKeySequence(Qt::ALT + Qt::Key_Left), &BrowserPane::Back);
    AddKey(QKeySequence(Qt::ALT + Qt::Key_Right), &BrowserPane::Forward);
    AddKey(QKeySequence(Qt::CTRL + Qt::Key_R), &BrowserPane::Reload);
    AddKey(QKeySequence(Qt::CTRL + Qt::Key_L), &BrowserPane::FocusAddress);
    const QList<QAction*> tools = actions();
    for (QAction* tool : tools)
        toolBar->AddTool(tool);
}

// Keys of the browser count while the keyboard is in it only.
void BrowserPane::AddKey(const QKeySequence& keys, void (BrowserPane::*act)())
{
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, act);
}

void BrowserPane::SetEmbedded(bool embedded)
{
    if (toolBar)
        toolBar->SetEmbedded(embedded);
    notice->SetForAuthor(embedded);
}

void BrowserPane::Reset()
{
    DropEngine(QStringLiteral("浏览器已经换到另一个应用"));
    notice->ShowStart();
    stack->setCurrentWidget(notice);
    if (toolBar) {
        toolBar->ShowAddress(QUrl());
        toolBar->ShowHistory(false, false);
        toolBar->ShowProgress(100);
    }
}

bool BrowserPane::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange) {
        FitWidth();
        if (toolBar)
            toolBar->SetPoppedOut(IsPoppedOut());
    }
    return IBrowserWidget::event(event);
}

bool BrowserPane::IsPoppedOut() const
{
    return qobject_cast<IBrowserBorderWindow*>(window());
}

// In its own window it is never wider than it was in the pane, the window's border included.
void BrowserPane::FitWidth()
{
    setMinimumWidth(DpiTool::ScaleDefault(IsPoppedOut() ? leastPaneWidthInWindow : leastPaneWidth));
}

void BrowserPane::actionEvent(QActionEvent* event)
{
    if (toolBar && event->type() == QEvent::ActionAdded)
        toolBar->AddTool(event->action());
    else if (toolBar && event->type() == QEvent::ActionRemoved)
        toolBar->RemoveTool(event->action());
    IBrowserWidget::actionEvent(event);
}

bool BrowserPane::StartEngine()
{
    if (view)
        return true;
    const QString obstacle = BrowserSandbox::Obstacle();
    if (!obstacle.isEmpty()) {
        notice->ShowProblem(QStringLiteral("内置浏览器不可用"), obstacle, false);
        stack->setCurrentWidget(notice);
        driver->AnswerOpen(false, obstacle);
        return false;
    }
    BrowserEnvironment::RefuseDebuggers();
    profile = BrowserPage::CreateProfile(this);
    page = new BrowserPage(profile, this);
    view = new QWebEngineView;
    view->setObjectName(QStringLiteral("browserView"));
    view->setPage(page);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    stack->addWidget(view);
    ConnectPage();
    driver->SetPage(page);
    pointer->SetView(view);
    return true;
}

void BrowserPane::ConnectPage()
{
    connect(page, &QWebEnginePage::loadStarted, this, &BrowserPane::SlotLoadStarted);
    connect(page, &QWebEnginePage::loadFinished, this, &BrowserPane::SlotLoadFinished);
    connect(page, &QWebEnginePage::renderProcessTerminated, this, &BrowserPane::SlotPageDied);
    connect(page, &BrowserPage::SigRefused, this, [this](const QString& reason) {
        driver->AnswerOpen(false, reason);
        WbToast::Show(reason, ToastWarning);
    });
    connect(page, &BrowserPage::SigDownload, this, &BrowserPane::ShowPageBefore);
    connect(page, &QWebEnginePage::windowCloseRequested, this, &BrowserPane::SlotPageClosed);
    connect(view, &QWidget::customContextMenuRequested, this, &BrowserPane::ShowMenu);
    if (!toolBar)
        return;
    connect(page, &QWebEnginePage::loadProgress, toolBar, [this](int percent) {
        toolBar->ShowProgress(percent);
        UpdateHistory();
    });
    connect(page, &QWebEnginePage::urlChanged, toolBar, [this](const QUrl& url) {
        toolBar->ShowAddress(url);
        UpdateHistory();
    });
}

// The page goes before its profile.
void BrowserPane::DropEngine(const QString& reason)
{
    pointer->SetView(nullptr);
    driver->DropPage(reason);
    delete std::exchange(view, nullptr);
    delete std::exchange(page, nullptr);
    delete std::exchange(profile, nullptr);
}

void BrowserPane::Load(const QUrl& url)
{
    if (!StartEngine())
        return;
    stack->setCurrentWidget(view);
    if (toolBar)
        toolBar->ShowAddress(url);
    // A process may open the same site a thousand times.
    if (url.host() != page->url().host())
        page->ForgetQuestions();
    page->load(url);
}

void BrowserPane::SlotAddressEntered(const QString& text)
{
    const QUrl url = BrowserAddress::FromTyped(text);
    if (!BrowserAddress::MayOpen(url)) {
        WbToast::Show(text.trimmed().isEmpty() ? QStringLiteral("请输入网址") : BrowserAddress::Refusal(text),
                      ToastWarning);
        return;
    }
    if (page)
        page->ForgetQuestions();
    Load(url);
    if (view)
        view->setFocus();
}

void BrowserPane::Back()
{
    if (!view)
        return;
    stack->setCurrentWidget(view);
    page->ForgetQuestions();
    view->back();
}

void BrowserPane::Forward()
{
    if (!view)
        return;
    page->ForgetQuestions();
    view->forward();
}

void BrowserPane::Reload()
{
    if (!page)
        return;
    page->ForgetQuestions();
    // A page that never came is asked for again; what is there instead is an older one.
    if (stack->currentWidget() == notice)
        Load(page->GetDestination());
    else
        view->reload();
}

void BrowserPane::StopLoading()
{
    stopped = true;
    if (view)
        view->stop();
}

void BrowserPane::FocusAddress()
{
    toolBar->FocusAddress();
}

void BrowserPane::SlotLoadStarted()
{
    stopped = false;
    if (toolBar)
        toolBar->ShowProgress(0);
}

void BrowserPane::SlotLoadFinished(bool ok)
{
    if (toolBar)
        toolBar->ShowProgress(100);
    UpdateHistory();
    if (ok) {
        stack->setCurrentWidget(view);
        driver->AnswerOpen(true, QString());
        return;
    }
    const QString reason = page->GetObstacle();
    driver->AnswerOpen(false, reason.isEmpty()
                                  ? QStringLiteral("网页没有打开：%1").arg(page->GetDestination().host())
                                  : reason);
    if (!stopped)
        ShowPageOrFailure();
}

// A server that refuses in words of its own is shown with them.
void BrowserPane::ShowPageOrFailure()
{
    if (page->url() != page->GetDestination()) {
        ShowFailure(page->GetObstacle());
        return;
    }
    page->runJavaScript(QStringLiteral("!!document.body && document.body.childNodes.length > 0"),
                        BrowserWorlds::pointer,
                        [guard = QPointer<BrowserPane>(this)](const QVariant& hasWords) {
                            if (guard && guard->page && !hasWords.toBool())
                                guard->ShowFailure(guard->page->GetObstacle());
                        });
}

void BrowserPane::ShowFailure(const QString& reason)
{
    const QString host = page->GetDestination().host();
    notice->ShowProblem(
        QStringLiteral("打不开 %1").arg(host.left(80)),
        reason.isEmpty() ? QStringLiteral("请检查网址是否正确、网络是否连通，再重试。") : reason, true);
    stack->setCurrentWidget(notice);
    if (toolBar)
        toolBar->ShowAddress(page->GetDestination());
}

void BrowserPane::SlotPageDied()
{
    driver->RefuseAll(QStringLiteral("网页意外结束"));
    ShowFailure(QStringLiteral("网页意外结束。可以重试打开它。"));
}

// A page that closes itself answers nothing any more; the next one starts afresh.
void BrowserPane::SlotPageClosed()
{
    driver->RefuseAll(QStringLiteral("网页关闭了自己"));
    ShowFailure(QStringLiteral("网页关闭了自己。可以重试打开它。"));
}

void BrowserPane::ShowPageBefore()
{
    if (page->url().isEmpty())
        notice->ShowStart();
    else
        stack->setCurrentWidget(view);
    if (toolBar)
        toolBar->ShowAddress(page->url());
}

void BrowserPane::UpdateHistory()
{
    if (toolBar)
        toolBar->ShowHistory(page->history()->canGoBack(), page->history()->canGoForward());
}

void BrowserPane::ShowMenu(const QPoint& position)
{
    const std::initializer_list<std::pair<QWebEnginePage::WebAction, QString>> offered{
        {QWebEnginePage::Back, QStringLiteral("后退")},
        {QWebEnginePage::Forward, QStringLiteral("前进")},
        {QWebEnginePage::Reload, QStringLiteral("重新加载")},
        {QWebEnginePage::Cut, QStringLiteral("剪切")},
        {QWebEnginePage::Copy, QStringLiteral("复制")},
        {QWebEnginePage::Paste, QStringLiteral("粘贴")},
        {QWebEnginePage::SelectAll, QStringLiteral("全选")},
    };
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& [action, text] : offered) {
        if (action == QWebEnginePage::Cut)
            menu->addSeparator();
        QAction* entry = menu->addAction(text);
        entry->setEnabled(page->action(action)->isEnabled());
        connect(entry, &QAction::triggered, page, [this, action = action] {
            if (action <= QWebEnginePage::Reload) // the navigating ones come first
                page->ForgetQuestions();
            page->triggerAction(action);
        });
    }
    menu->popup(view->mapToGlobal(position));
}
