// SPDX-License-Identifier: Apache-2.0

#include "AppListPage.h"

#include "AppCardDelegate.h"
#include "AppCards.h"
#include "AppListModel.h"
#include "AppPageHead.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbToast.h>

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QListView>
#include <QMenu>
#include <QShortcut>

#include <utility>

namespace
{
// What is done with one app, besides opening it.
struct CardAct
{
    const char* icon;
    QString text;
    QKeySequence key;
    void (AppListPage::*signal)(const AppRecord& app);
};

const QVector<CardAct>& CardActs()
{
    static const QVector<CardAct> acts{
        {"rename", QStringLiteral("重命名"), Qt::Key_F2, &AppListPage::SigRename},
        {"copy", QStringLiteral("复制应用"), Qt::CTRL + Qt::Key_D, &AppListPage::SigCopy},
        {"text", QStringLiteral("标签…"), Qt::CTRL + Qt::Key_T, &AppListPage::SigTags},
        {"export", QStringLiteral("导出应用…"), Qt::CTRL + Qt::Key_E, &AppListPage::SigExport},
        {"publish", QStringLiteral("发布管理…"), {}, &AppListPage::SigReleases},
        {"delete", QStringLiteral("删除应用…"), Qt::Key_Delete, &AppListPage::SigDelete},
    };
    return acts;
}
} // namespace

AppListPage::AppListPage(AppListModel* apps, QWidget* parent)
    : WbBaseWidget(parent), model(apps), head(new AppPageHead(AppPageHead::Mine, this)),
      cards(new AppCards(QStringLiteral("listApps"), apps, this))
{
    setObjectName(QStringLiteral("AppListPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->setSpacing(16);
    layout->addWidget(head);
    layout->addWidget(cards, 1);
    AddButtons();
    AddMore();
    cards->SetEmptyState(QStringLiteral("还没有应用"), QStringLiteral("新建一个应用，从空白或模板开始"),
                         CreateOffer());
    CreateShortcuts();
    ConnectCards();

    connect(head, &AppPageHead::SigTab, this, &AppListPage::SigTab);
    connect(head, &AppPageHead::SigRefresh, this, &AppListPage::SigRefresh);
    connect(head, &AppPageHead::SigSearched, this, [this] { cards->Search(head->GetSearched()); });
    WbScaledForm::Follow(this);
}

WbPushButton* AppListPage::CreateButton(const char* name, int kind, QWidget* parent)
{
    const bool visual = kind == AppKindVisual;
    auto* button = new WbPushButton(parent, visual ? Wb::PrimaryButton : Wb::SecondaryButton);
    button->setObjectName(QLatin1String(name));
    button->setText(visual ? QStringLiteral("新建可视化应用") : QStringLiteral("新建编程应用"));
    connect(button, &QPushButton::clicked, this, [this, kind] { emit SigCreate(kind); });
    return button;
}

void AppListPage::AddButtons()
{
    auto* program = CreateButton("buttonNewProgram", AppKindProgram, head);
    auto* visual = CreateButton("buttonNewVisual", AppKindVisual, head);
    visual->setToolTip(QStringLiteral("新建可视化应用（Ctrl+N）"));
    program->setIcon(WbIcons::Get(QStringLiteral("app-program")));
    visual->setIcon(WbIcons::Get(QStringLiteral("add"), WbColor::TextOnAccent));
    head->AddButton(program);
    head->AddButton(visual);
}

QWidget* AppListPage::CreateOffer()
{
    auto* buttons = new QWidget(cards);
    auto* row = new QHBoxLayout(buttons);
    row->setSpacing(12);
    row->addStretch();
    row->addWidget(CreateButton("buttonEmptyVisual", AppKindVisual, buttons));
    row->addWidget(CreateButton("buttonEmptyProgram", AppKindProgram, buttons));
    row->addStretch();
    return buttons;
}

void AppListPage::ConnectCards()
{
    QListView* list = cards->GetList();
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(cards, &AppCards::SigRefresh, this, &AppListPage::SigRefresh);
    connect(list, &QListView::activated, this, &AppListPage::SlotActivated);
    connect(list, &QListView::clicked, this, &AppListPage::SlotClicked);
    connect(list, &QListView::customContextMenuRequested, this, [this, list](const QPoint& pos) {
        ShowCardMenu(list->indexAt(pos), list->viewport()->mapToGlobal(pos));
    });
    connect(cards->GetDelegate(), &AppCardDelegate::SigMenu, this,
            [this](const QModelIndex& index, const QPoint& globalPos) {
                menuTookClick = true;
                ShowCardMenu(index, globalPos);
            });
}

// In the palette and among the keys, too.
void AppListPage::CreateShortcuts()
{
    auto* create = new QShortcut(QKeySequence::New, this);
    create->setContext(Qt::WidgetWithChildrenShortcut);
    connect(create, &QShortcut::activated, this, [this] { emit SigCreate(AppKindVisual); });
    for (const CardAct& act : CardActs()) {
        auto* action = new QAction(act.text, this);
        action->setShortcut(act.key);
        // What takes something away needs the card itself to have the keys.
        const bool isOfCard = act.key == QKeySequence(Qt::Key_Delete);
        action->setShortcutContext(isOfCard ? Qt::WidgetShortcut : Qt::WidgetWithChildrenShortcut);
        static_cast<QWidget*>(isOfCard ? cards->GetList() : static_cast<QWidget*>(this))->addAction(action);
        connect(action, &QAction::triggered, this, [this, signal = act.signal] { ActOnCurrent(signal); });
    }
    const auto add = [this](const QString& text, int key, void (AppListPage::*signal)()) {
        auto* action = new QAction(text, this);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        connect(action, &QAction::triggered, this, signal);
    };
    add(QStringLiteral("导入应用…"), Qt::CTRL + Qt::Key_I, &AppListPage::SigImport);
    add(QStringLiteral("回收站…"), Qt::CTRL + Qt::SHIFT + Qt::Key_Delete, &AppListPage::SigBin);
}

void AppListPage::ActOnCurrent(void (AppListPage::*act)(const AppRecord& app))
{
    const int row = cards->GetCurrentRow();
    if (row >= 0)
        emit(this->*act)(model->AppAt(row));
    else
        WbToast::Show(QStringLiteral("请先选择一个应用"), ToastWarning);
}

void AppListPage::AddMore()
{
    auto* more = new WbPushButton(head, Wb::SecondaryButton);
    more->setObjectName(QStringLiteral("buttonMore"));
    more->setIcon(WbIcons::Get(QStringLiteral("more")));
    DpiFollower::Follow(more, [more] { more->setFixedWidth(DpiTool::ScaleDefault(40)); });
    more->setAccessibleName(QStringLiteral("更多"));
    more->setToolTip(QStringLiteral("更多：按标签查看、导入应用、回收站"));
    auto* menu = new QMenu(more);
    menu->setObjectName(QStringLiteral("menuMore"));
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { FillMore(menu); });
    // Without the mark of a button with a menu, which has no room beside the icon.
    connect(more, &QPushButton::clicked, menu,
            [more, menu] { menu->popup(more->mapToGlobal(QPoint(0, more->height()))); });
    head->AddButton(more);
}

void AppListPage::FillMore(QMenu* menu)
{
    menu->clear();
    const QStringList tags = model->GetTags();
    if (!tags.isEmpty())
        menu->addAction(QStringLiteral("全部应用"), this, [this] { head->SetSearched(QString()); });
    for (const QString& tag : tags) {
        QString text = QLatin1Char('#') + tag;
        menu->addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")), this,
                        [this, tag] { head->SetSearched(QLatin1Char('#') + tag); });
    }
    menu->addSeparator();
    menu->addAction(WbIcons::Get(QStringLiteral("import")), QStringLiteral("导入应用…"), this,
                    &AppListPage::SigImport);
    menu->addAction(WbIcons::Get(QStringLiteral("delete")), QStringLiteral("回收站…"), this,
                    &AppListPage::SigBin);
}

void AppListPage::ShowLoading()
{
    cards->ShowLoading();
}

void AppListPage::ShowFailed(const QString& reason)
{
    cards->ShowFailed(reason);
}

void AppListPage::ShowApps()
{
    cards->ShowLoaded();
    // Keys go to the cards, unless the user is at work elsewhere on the page.
    const QWidget* focus = QApplication::focusWidget();
    if (isVisible() && (!focus || head->HasIdleFocus() || !isAncestorOf(focus)))
        cards->GetList()->setFocus();
}

void AppListPage::SelectApp(const QString& appId)
{
    cards->SelectRow(model->RowOf(appId));
}

void AppListPage::SlotClicked(const QModelIndex& index)
{
    // The view announces a click on the menu mark too.
    if (!std::exchange(menuTookClick, false))
        emit SigOpen(AppOf(index));
}

void AppListPage::ShowCardMenu(const QModelIndex& index, const QPoint& globalPos)
{
    if (!index.isValid())
        return;
    const AppRecord app = AppOf(index);
    // Not exec(): the page may go, or its list change, while the menu is open within an event of the list.
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menuCard"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(WbIcons::Get(QStringLiteral("open")), QStringLiteral("打开"), this,
                    [this, app] { emit SigOpen(app); });
    const bool isOwn = index.data(AppListModel::OwnRole).toBool();
    for (const CardAct& act : CardActs()) {
        if (isOwn && act.signal == &AppListPage::SigDelete) {
            menu->addAction(WbIcons::Get(QStringLiteral("share")), QStringLiteral("灰度邀请码…"), this,
                            [this, app] { emit SigInvitations(app); });
        }
        auto* action = menu->addAction(WbIcons::Get(QLatin1String(act.icon)), act.text, this,
                                       [this, app, signal = act.signal] { emit(this->*signal)(app); });
        action->setShortcut(act.key);
        action->setShortcutContext(Qt::WidgetShortcut);
    }
    menu->popup(globalPos);
}

AppRecord AppListPage::AppOf(const QModelIndex& index) const
{
    return model->AppAt(cards->RowOf(index));
}
