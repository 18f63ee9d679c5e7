#include "AppListPage.h"

#include "AppCardDelegate.h"
#include "AppCards.h"
#include "AppListModel.h"
#include "AppPageHead.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>

#include <QApplication>
#include <QBoxLayout>
#include <QListView>
#include <QMenu>
#include <QShortcut>

#include <utility>

AppListPage::AppListPage(AppListModel* apps, QWidget* parent)
    : WbBaseWidget(parent), model(apps), head(new AppPageHead(AppTabs::Mine, this)),
      cards(new AppCards(QStringLiteral("listApps"), apps, this))
{
    setObjectName(QStringLiteral("AppListPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->setSpacing(16);
    layout->addWidget(head);
    layout->addWidget(cards, 1);
    AddButtons();
    cards->SetEmptyState(QStringLiteral("还没有应用"), QStringLiteral("新建一个应用，从空白或模板开始"),
                         CreateOffer());
    CreateShortcuts();
    ConnectCards();

    connect(head, &AppPageHead::SigTab, this, &AppListPage::SigTab);
    connect(head, &AppPageHead::SigRefresh, this, &AppListPage::SigRefresh);
    connect(head, &AppPageHead::SigSearched, this, [this] { cards->Search(head->GetSearched()); });
}

AppListPage::~AppListPage() = default;

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

void AppListPage::CreateShortcuts()
{
    const auto add = [this](const QKeySequence& keys, auto act) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    add(QKeySequence::New, [this] { emit SigCreate(AppKindVisual); });
    add(QKeySequence(Qt::Key_F2), [this] {
        if (cards->GetCurrentRow() >= 0) {
            emit SigRename(model->AppAt(cards->GetCurrentRow()));
        }
    });
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
    if (isVisible() && (!focus || head->HasIdleFocus() || !isAncestorOf(focus))) {
        cards->GetList()->setFocus();
    }
}

void AppListPage::SelectApp(const QString& appId)
{
    cards->SelectRow(model->RowOf(appId));
}

void AppListPage::SlotActivated(const QModelIndex& index)
{
    emit SigOpen(AppOf(index));
}

void AppListPage::SlotClicked(const QModelIndex& index)
{
    // The view announces a click on the menu mark too.
    if (!std::exchange(menuTookClick, false)) {
        emit SigOpen(AppOf(index));
    }
}

void AppListPage::ShowCardMenu(const QModelIndex& index, const QPoint& globalPos)
{
    if (!index.isValid()) {
        return;
    }
    const AppRecord app = AppOf(index);
    // Not exec(): the page may go, or its list change, while the menu is open within an event of the list.
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menuCard"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(WbIcons::Get(QStringLiteral("open")), QStringLiteral("打开"), this,
                    [this, app] { emit SigOpen(app); });
    menu->addAction(WbIcons::Get(QStringLiteral("rename")), QStringLiteral("重命名"), this,
                    [this, app] { emit SigRename(app); });
    menu->addAction(WbIcons::Get(QStringLiteral("publish")), QStringLiteral("发布管理…"), this,
                    [this, app] { emit SigReleases(app); });
    if (index.data(AppListModel::OwnRole).toBool()) {
        menu->addAction(WbIcons::Get(QStringLiteral("share")), QStringLiteral("灰度邀请码…"), this,
                        [this, app] { emit SigInvitations(app); });
    }
    menu->popup(globalPos);
}

AppRecord AppListPage::AppOf(const QModelIndex& index) const
{
    return model->AppAt(cards->RowOf(index));
}
