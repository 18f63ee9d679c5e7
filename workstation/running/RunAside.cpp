// SPDX-License-Identifier: Apache-2.0

#include "RunAside.h"

#include "BrowserNeed.h"
#include "ui_RunAside.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>
#include <WbWebKernal/WbRichReader.h>

#include <QRegularExpression>

#include <utility>

namespace
{
enum Side
{
    ManualSide,
    BrowserSide,
};
constexpr int longestEmpty = 20000;

// An editor of rich texts leaves tags where there was a text.
bool SaysSomething(const QString& instructions)
{
    static const QRegularExpression head(QStringLiteral("<(head|style)\\b.*?</\\1>"),
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    if (instructions.size() > longestEmpty ||
        instructions.contains(QLatin1String("<img"), Qt::CaseInsensitive))
        return true;
    QString words = instructions;
    words.remove(head).remove(tag).replace(QLatin1String("&nbsp;"), QLatin1String(" "));
    return !words.trimmed().isEmpty();
}
} // namespace

RunAside::RunAside(QWidget* parent) : QFrame(parent), manual(new WbRichReader)
{
    Ui::RunAside ui;
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    caption = ui.labelAside;
    tabs = ui.tabsAside;
    stack = ui.stackAside;
    tabs->addTab(QStringLiteral("使用说明"));
    tabs->addTab(QStringLiteral("浏览器"));
    tabs->hide();
    stack->addWidget(manual);
    connect(tabs, &QTabBar::currentChanged, stack, &QStackedWidget::setCurrentIndex);
}

void RunAside::ShowApp(const RpaAppData& app)
{
    Clear();
    const QString instructions = app.GetAppExtendInfo()->GetManual();
    manual->ShowText(instructions);
    if (BrowserNeed::Of(app))
        MakeBrowser();
    const bool isTold = SaysSomething(instructions);
    caption->setVisible(!browser);
    tabs->setVisible(browser && isTold);
    tabs->setCurrentIndex(browser && !isTold ? BrowserSide : ManualSide);
    setVisible(browser || isTold);
}

// One browser per app: cookies and history of one app are nothing to the next.
void RunAside::MakeBrowser()
{
    browser = WbBrowserLite::Instance()->CreateBrowserWidget(stack);
    if (browser) {
        browser->InitToolBar();
        browser->SetEmbedded(false);
        stack->addWidget(browser);
    }
}

void RunAside::Clear()
{
    tabs->setCurrentIndex(ManualSide);
    manual->ShowText(QString());
    delete std::exchange(browser, nullptr);
}

IBrowserEngine* RunAside::GetBrowserEngine() const
{
    return browser ? browser->GetBrowserEngine() : nullptr;
}

void RunAside::ShowBrowser()
{
    if (browser)
        tabs->setCurrentIndex(BrowserSide);
}
