// SPDX-License-Identifier: Apache-2.0

#include "TipController.h"

#include "EditorPage.h"
#include "MainWindow.h"
#include "TipBar.h"
#include "WorkstationSettings.h"

#include <OxBase/DpiTool.h>

#include <QEvent>
#include <QHash>
#include <QWidget>

namespace
{
constexpr int leastHeight = 640;
constexpr const char* editorParts[] = {"pageUIDesign", "pageProcess", "pageExtendInfo"};

QString TipFor(const QString& place)
{
    static const QHash<QString, QString> tips{
        {QStringLiteral("AppListPage"), QStringLiteral("第一次使用：新建一个应用，或打开示例看看它怎样工作。F"
                                                       "1 打开使用指南，Ctrl+Shift+P 查找任何命令。")},
        {QStringLiteral("pageUIDesign"),
         QStringLiteral(
             "先在左边的“参数”里添加使用者要填写的内容，再到“流程设计”（Ctrl+2）编写步骤，按 F5 运行。")},
        {QStringLiteral("pageProcess"),
         QStringLiteral(
             "双击左边的指令加入流程，或在流程里按回车、输入几个字直接查找指令；选中一步后在右边填写。")},
        {QStringLiteral("pageExtendInfo"),
         QStringLiteral("使用说明写给使用者看：做什么、运行前准备什么。留空时，使用者的界面上没有这一栏。")},
        {QStringLiteral("OnlineAppsPage"), QStringLiteral("单击一个应用打开它，填写内容，再单击按钮运行。")},
        {QStringLiteral("GrayAppsPage"),
         QStringLiteral("灰度应用只给受邀的人试用：输入作者给您的邀请码，应用就会出现在这里。")},
        {QStringLiteral("RunPage"),
         QStringLiteral("填写内容后单击按钮运行。出错时，单击“发送给作者”可以把日志和版本交给作者。")},
    };
    return tips.value(place);
}
} // namespace

TipController::TipController(WorkstationSettings* store, MainWindow* mainWindow, EditorPage* editorPage)
    : settings(store), window(mainWindow), editing(editorPage), bar(new TipBar)
{
    window->AddFoot(bar);
    window->installEventFilter(this);
    connect(window, &MainWindow::SigPageShown, this, &TipController::Update);
    connect(editing, &EditorPage::SigOpened, this, &TipController::FollowEditor);
    connect(settings, &WorkstationSettings::SigTipsChanged, this, &TipController::Update);
    connect(bar, &TipBar::SigDone, this, &TipController::Forget);
    connect(bar, &TipBar::SigNoMore, this, [this] { settings->SetTips(false); });
}

bool TipController::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
        // Later: a page that shrinks within its own layout would not end.
        QMetaObject::invokeMethod(this, &TipController::Update, Qt::QueuedConnection);
    }
    return false;
}

void TipController::FollowEditor(QWidget* editor)
{
    for (const char* name : editorParts)
        if (auto* part = editor->findChild<QWidget*>(QLatin1String(name)))
            part->installEventFilter(this);
}

QString TipController::FindPlace() const
{
    const QWidget* const page = window->CurrentPage();
    for (const char* name : editorParts) {
        const auto* part = page == editing ? page->findChild<QWidget*>(QLatin1String(name)) : nullptr;
        if (part && part->isVisible())
            return part->objectName();
    }
    return page ? page->objectName() : QString();
}

void TipController::Update()
{
    const QString place = FindPlace();
    if (!told.isEmpty() && place != told) {
        Forget(); // who went on has seen it
        return;
    }
    const bool wanted = settings->GetTips() && !settings->GetSeenTips().contains(place) &&
                        window->height() >= DpiTool::ScaleDefault(leastHeight);
    const QString tip = wanted ? TipFor(place) : QString();
    told = tip.isEmpty() ? QString() : place;
    bar->Tell(tip);
}

void TipController::Forget()
{
    settings->AddSeenTip(told);
    told.clear();
    Update();
}
