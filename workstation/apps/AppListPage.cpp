#include "AppListPage.h"

#include "AppCardDelegate.h"
#include "AppListModel.h"
#include "AppTabs.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QApplication>
#include <QBoxLayout>
#include <QListView>
#include <QMenu>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStackedWidget>

#include <utility>

namespace
{
WbPushButton* Button(const char* objectName, const QString& text, int type, QWidget* parent)
{
    auto* button = new WbPushButton(parent, type);
    button->setObjectName(QLatin1String(objectName));
    button->setText(text);
    return button;
}

QListView* CreateCards(QAbstractItemModel* model, QWidget* parent)
{
    auto* cards = new QListView(parent);
    cards->setObjectName(QStringLiteral("listApps"));
    cards->setAccessibleName(QStringLiteral("应用列表"));
    cards->setModel(model);
    cards->setFrameShape(QFrame::NoFrame);
    cards->setViewMode(QListView::IconMode);
    cards->setMovement(QListView::Static);
    cards->setResizeMode(QListView::Adjust);
    cards->setUniformItemSizes(true);
    cards->setMouseTracking(true);
    cards->setSelectionMode(QAbstractItemView::SingleSelection);
    cards->setEditTriggers(QAbstractItemView::NoEditTriggers);
    cards->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    cards->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    cards->setContextMenuPolicy(Qt::CustomContextMenu);
    return cards;
}
} // namespace

AppListPage::AppListPage(AppListModel* apps, QWidget* parent)
    : WbBaseWidget(parent), model(apps), filter(new QSortFilterProxyModel(this))
{
    setObjectName(QStringLiteral("AppListPage"));
    filter->setSourceModel(model);
    filter->setFilterCaseSensitivity(Qt::CaseInsensitive);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->setSpacing(16);
    layout->addWidget(CreateHead());
    status = new RequestStatusBaseWidget(this);
    status->setObjectName(QStringLiteral("statusApps"));
    layout->addWidget(status, 1);
    layout->addWidget(CreateContent(), 1);
    status->AddSucceedWidget(content);
    CreateShortcuts();

    connect(status, &RequestStatusBaseWidget::SigRefresh, this, &AppListPage::SigRefresh);
    connect(editSearch, &QLineEdit::textChanged, this, [this](const QString& text) {
        filter->setFilterFixedString(text.trimmed());
        UpdateContent();
    });
    connect(cards, &QListView::activated, this, &AppListPage::SlotActivated);
    connect(cards, &QListView::clicked, this, &AppListPage::SlotClicked);
    connect(cards, &QListView::customContextMenuRequested, this, [this](const QPoint& pos) {
        ShowCardMenu(cards->indexAt(pos), cards->viewport()->mapToGlobal(pos));
    });
    connect(model, &QAbstractItemModel::modelReset, this, &AppListPage::UpdateContent);
    UpdateContent();
}

AppListPage::~AppListPage() = default;

QWidget* AppListPage::CreateHead()
{
    auto* head = new QWidget(this);
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    auto* tabs = new AppTabs(AppTabs::Mine, head);
    editSearch = new WbLineEdit(head);
    editSearch->setObjectName(QStringLiteral("editSearch"));
    editSearch->setAccessibleName(QStringLiteral("搜索应用"));
    editSearch->setPlaceholderText(QStringLiteral("搜索应用名称"));
    editSearch->setToolTip(QStringLiteral("搜索应用（Ctrl+F）"));
    editSearch->setClearButtonEnabled(true);
    editSearch->addAction(WbIcons::Get(QStringLiteral("search")), QLineEdit::LeadingPosition);
    editSearch->setFixedWidth(260);
    auto* refresh = Button("buttonRefresh", QStringLiteral("刷新"), Wb::SecondaryButton, head);
    refresh->setToolTip(QStringLiteral("重新读取应用列表（F5）"));
    refresh->setIcon(WbIcons::Get(QStringLiteral("refresh")));
    auto* program = Button("buttonNewProgram", QStringLiteral("新建编程应用"), Wb::SecondaryButton, head);
    auto* visual = Button("buttonNewVisual", QStringLiteral("新建可视化应用"), Wb::PrimaryButton, head);
    visual->setToolTip(QStringLiteral("新建可视化应用（Ctrl+N）"));
    program->setIcon(WbIcons::Get(QStringLiteral("app-program")));
    visual->setIcon(WbIcons::Get(QStringLiteral("add"), WbColor::TextOnAccent));
    layout->addWidget(tabs);
    layout->addStretch();
    layout->addWidget(editSearch);
    layout->addWidget(refresh);
    layout->addWidget(program);
    layout->addWidget(visual);

    connect(tabs, &AppTabs::SigChosen, this, &AppListPage::SigTab);
    connect(refresh, &QPushButton::clicked, this, &AppListPage::SigRefresh);
    connect(program, &QPushButton::clicked, this, [this] { emit SigCreate(AppKindProgram); });
    connect(visual, &QPushButton::clicked, this, [this] { emit SigCreate(AppKindVisual); });
    return head;
}

QWidget* AppListPage::CreateContent()
{
    content = new QStackedWidget(this);
    content->setObjectName(QStringLiteral("stackApps"));
    cards = CreateCards(filter, content);
    auto* delegate = new AppCardDelegate(cards);
    cards->setItemDelegate(delegate);
    cards->setGridSize(AppCardDelegate::CardSize());
    emptyState = CreateEmptyState();
    content->addWidget(cards);
    content->addWidget(emptyState);
    connect(delegate, &AppCardDelegate::SigMenu, this,
            [this](const QModelIndex& index, const QPoint& globalPos) {
                menuTookClick = true;
                ShowCardMenu(index, globalPos);
            });
    return content;
}

QWidget* AppListPage::CreateEmptyState()
{
    auto* empty = new QWidget(content);
    empty->setObjectName(QStringLiteral("emptyState"));
    auto* picture = new WbIconPicture(QStringLiteral("empty"), 64, WbColor::TextDisabled, empty);
    labelEmpty = new WbLabel(empty);
    labelEmpty->setObjectName(QStringLiteral("labelEmpty"));
    labelEmpty->setAlignment(Qt::AlignCenter);
    labelEmptyHint = new WbLabel(empty);
    labelEmptyHint->setObjectName(QStringLiteral("labelEmptyHint"));
    labelEmptyHint->setAlignment(Qt::AlignCenter);
    emptyButtons = new QWidget(empty);
    auto* visual =
        Button("buttonEmptyVisual", QStringLiteral("新建可视化应用"), Wb::PrimaryButton, emptyButtons);
    auto* program =
        Button("buttonEmptyProgram", QStringLiteral("新建编程应用"), Wb::SecondaryButton, emptyButtons);
    auto* row = new QHBoxLayout(emptyButtons);
    row->setSpacing(12);
    row->addStretch();
    row->addWidget(visual);
    row->addWidget(program);
    row->addStretch();
    auto* layout = new QVBoxLayout(empty);
    layout->setSpacing(8);
    layout->addStretch(2);
    layout->addWidget(picture);
    layout->addWidget(labelEmpty);
    layout->addWidget(labelEmptyHint);
    layout->addSpacing(8);
    layout->addWidget(emptyButtons);
    layout->addStretch(3);
    connect(visual, &QPushButton::clicked, this, [this] { emit SigCreate(AppKindVisual); });
    connect(program, &QPushButton::clicked, this, [this] { emit SigCreate(AppKindProgram); });
    return empty;
}

void AppListPage::CreateShortcuts()
{
    const auto add = [this](const QKeySequence& keys, auto act) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    add(QKeySequence::Find, [this] {
        editSearch->setFocus(Qt::ShortcutFocusReason);
        editSearch->selectAll();
    });
    add(QKeySequence::New, [this] { emit SigCreate(AppKindVisual); });
    add(QKeySequence::Refresh, [this] { emit SigRefresh(); });
    add(QKeySequence(Qt::Key_F2), [this] {
        if (cards->currentIndex().isValid()) {
            emit SigRename(AppOf(cards->currentIndex()));
        }
    });
}

void AppListPage::ShowLoading()
{
    status->SetStatus(RequestStatus::Loading);
}

void AppListPage::ShowFailed(const QString& reason)
{
    status->SetErrorMsg(reason);
    status->SetStatus(RequestStatus::Failed);
}

void AppListPage::ShowApps()
{
    status->SetStatus(RequestStatus::Succeeded);
    UpdateContent();
    // Keys go to the cards, unless the user is at work elsewhere on the page.
    const QWidget* focus = QApplication::focusWidget();
    if (isVisible() && (!focus || focus == editSearch || !isAncestorOf(focus)) &&
        editSearch->text().isEmpty()) {
        cards->setFocus();
    }
}

void AppListPage::SelectApp(const QString& appId)
{
    const QModelIndex index = filter->mapFromSource(model->index(model->RowOf(appId), 0));
    if (index.isValid()) {
        cards->setCurrentIndex(index);
        cards->scrollTo(index);
        cards->setFocus();
    }
}

void AppListPage::UpdateContent()
{
    const bool noApps = model->rowCount() == 0;
    if (noApps) {
        labelEmpty->setText(QStringLiteral("还没有应用"));
        labelEmptyHint->setText(QStringLiteral("新建一个应用，从空白或模板开始"));
    } else {
        labelEmpty->setText(QStringLiteral("没有找到名称包含“%1”的应用").arg(editSearch->text().trimmed()));
        labelEmptyHint->setText(QStringLiteral("换一个词再试"));
    }
    emptyButtons->setVisible(noApps);
    content->setCurrentWidget(filter->rowCount() == 0 ? emptyState : static_cast<QWidget*>(cards));
    if (!cards->currentIndex().isValid()) {
        cards->setCurrentIndex(filter->index(0, 0));
    }
}

void AppListPage::SlotActivated(const QModelIndex& index)
{
    emit SigOpen(AppOf(index));
}

void AppListPage::SlotClicked(const QModelIndex& index)
{
    // The view announces a click on the menu mark too, after the menu has closed.
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
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("menuCard"));
    const QAction* open = menu.addAction(WbIcons::Get(QStringLiteral("open")), QStringLiteral("打开"));
    const QAction* rename = menu.addAction(WbIcons::Get(QStringLiteral("rename")), QStringLiteral("重命名"));
    const QAction* invitations = nullptr;
    if (index.data(AppListModel::OwnRole).toBool()) {
        invitations = menu.addAction(WbIcons::Get(QStringLiteral("share")), QStringLiteral("灰度邀请码…"));
    }
    const QAction* chosen = menu.exec(globalPos);
    if (chosen == open) {
        emit SigOpen(app);
    } else if (chosen == rename) {
        emit SigRename(app);
    } else if (chosen && chosen == invitations) {
        emit SigInvitations(app);
    }
}

AppRecord AppListPage::AppOf(const QModelIndex& index) const
{
    return model->AppAt(filter->mapToSource(index).row());
}
