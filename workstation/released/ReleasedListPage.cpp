#include "ReleasedListPage.h"

#include "AppCardDelegate.h"
#include "ReleasedAppModel.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QListView>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStackedWidget>

namespace
{
constexpr int longestCode = 20;

QListView* CreateCards(QAbstractItemModel* model, QWidget* parent)
{
    auto* cards = new QListView(parent);
    cards->setObjectName(QStringLiteral("listReleased"));
    cards->setAccessibleName(QStringLiteral("应用列表"));
    cards->setModel(model);
    cards->setFrameShape(QFrame::NoFrame);
    cards->setViewMode(QListView::IconMode);
    cards->setMovement(QListView::Static);
    cards->setResizeMode(QListView::Adjust);
    cards->setUniformItemSizes(true);
    cards->setMouseTracking(true);
    cards->setEditTriggers(QAbstractItemView::NoEditTriggers);
    cards->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    cards->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    return cards;
}
} // namespace

ReleasedListPage::ReleasedListPage(AppTabs::Tab shown, ReleasedAppModel* apps, QWidget* parent)
    : WbBaseWidget(parent), tab(shown), model(apps), filter(new QSortFilterProxyModel(this))
{
    setObjectName(tab == AppTabs::Online ? QStringLiteral("OnlineAppsPage") : QStringLiteral("GrayAppsPage"));
    filter->setSourceModel(model);
    filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->setSpacing(16);
    layout->addWidget(CreateHead());
    if (tab == AppTabs::Gray) {
        layout->addWidget(CreateRedeemRow());
    }
    status = new RequestStatusBaseWidget(this);
    status->setObjectName(QStringLiteral("statusApps"));
    layout->addWidget(status, 1);
    layout->addWidget(CreateContent(), 1);
    status->AddSucceedWidget(content);

    const auto run = [this](const QModelIndex& index) {
        emit SigRun(model->ReleasedAt(filter->mapToSource(index).row()));
    };
    auto* refreshKey = new QShortcut(QKeySequence::Refresh, this);
    refreshKey->setContext(Qt::WidgetWithChildrenShortcut);
    connect(refreshKey, &QShortcut::activated, this, &ReleasedListPage::SigRefresh);
    connect(status, &RequestStatusBaseWidget::SigRefresh, this, &ReleasedListPage::SigRefresh);
    connect(editSearch, &QLineEdit::textChanged, this, [this](const QString& text) {
        filter->setFilterFixedString(text.trimmed());
        UpdateContent();
    });
    connect(cards, &QListView::activated, this, run);
    connect(cards, &QListView::clicked, this, run);
    connect(model, &QAbstractItemModel::modelReset, this, &ReleasedListPage::UpdateContent);
    UpdateContent();
}

QWidget* ReleasedListPage::CreateHead()
{
    auto* head = new QWidget(this);
    auto* tabs = new AppTabs(tab, head);
    editSearch = new WbLineEdit(head);
    editSearch->setObjectName(QStringLiteral("editSearch"));
    editSearch->setAccessibleName(QStringLiteral("搜索应用"));
    editSearch->setPlaceholderText(QStringLiteral("搜索应用名称"));
    editSearch->setClearButtonEnabled(true);
    editSearch->addAction(WbIcons::Get(QStringLiteral("search")), QLineEdit::LeadingPosition);
    editSearch->setFixedWidth(260);
    auto* refresh = new WbPushButton(head, Wb::SecondaryButton);
    refresh->setObjectName(QStringLiteral("buttonRefresh"));
    refresh->setText(QStringLiteral("刷新"));
    refresh->setToolTip(QStringLiteral("重新读取应用列表（F5）"));
    refresh->setIcon(WbIcons::Get(QStringLiteral("refresh")));
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(tabs);
    layout->addStretch();
    layout->addWidget(editSearch);
    layout->addWidget(refresh);
    connect(tabs, &AppTabs::SigChosen, this, &ReleasedListPage::SigTab);
    connect(refresh, &QPushButton::clicked, this, &ReleasedListPage::SigRefresh);
    return head;
}

QWidget* ReleasedListPage::CreateRedeemRow()
{
    auto* row = new QWidget(this);
    editCode = new WbLineEdit(row);
    editCode->setObjectName(QStringLiteral("editCode"));
    editCode->setAccessibleName(QStringLiteral("邀请码"));
    editCode->setPlaceholderText(QStringLiteral("输入邀请码，例如 7KQ2M-XW9HT"));
    editCode->setMaxLength(longestCode);
    editCode->setFixedWidth(260);
    buttonRedeem = new WbPushButton(row, Wb::PrimaryButton);
    buttonRedeem->setObjectName(QStringLiteral("buttonRedeem"));
    buttonRedeem->setText(QStringLiteral("使用邀请码"));
    buttonRedeem->setEnabled(false);
    labelProblem = new WbLabel(row);
    labelProblem->setObjectName(QStringLiteral("labelProblem"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(editCode);
    layout->addWidget(buttonRedeem);
    layout->addWidget(labelProblem, 1);
    connect(editCode, &QLineEdit::textChanged, this, [this](const QString& text) {
        labelProblem->clear();
        buttonRedeem->setEnabled(!text.trimmed().isEmpty());
    });
    connect(editCode, &QLineEdit::returnPressed, this, &ReleasedListPage::SlotRedeem);
    connect(buttonRedeem, &QPushButton::clicked, this, &ReleasedListPage::SlotRedeem);
    return row;
}

QWidget* ReleasedListPage::CreateContent()
{
    content = new QStackedWidget(this);
    cards = CreateCards(filter, content);
    const QString time = tab == AppTabs::Online ? QStringLiteral("上线于 ") : QStringLiteral("灰度于 ");
    auto* delegate = new AppCardDelegate(cards);
    delegate->SetReadOnly(time);
    cards->setItemDelegate(delegate);
    cards->setGridSize(AppCardDelegate::CardSize());
    emptyState = CreateEmptyState();
    content->addWidget(cards);
    content->addWidget(emptyState);
    return content;
}

QWidget* ReleasedListPage::CreateEmptyState()
{
    auto* empty = new QWidget(content);
    auto* picture = new WbIconPicture(QStringLiteral("empty"), 64, WbColor::TextDisabled, empty);
    labelEmpty = new WbLabel(empty);
    labelEmpty->setObjectName(QStringLiteral("labelEmpty"));
    labelEmpty->setAlignment(Qt::AlignCenter);
    labelEmptyHint = new WbLabel(empty);
    labelEmptyHint->setObjectName(QStringLiteral("labelEmptyHint"));
    labelEmptyHint->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(empty);
    layout->setSpacing(8);
    layout->addStretch(2);
    layout->addWidget(picture);
    layout->addWidget(labelEmpty);
    layout->addWidget(labelEmptyHint);
    layout->addStretch(3);
    return empty;
}

void ReleasedListPage::ShowLoading()
{
    status->SetStatus(RequestStatus::Loading);
}

void ReleasedListPage::ShowFailed(const QString& reason)
{
    status->SetErrorMsg(reason);
    status->SetStatus(RequestStatus::Failed);
}

void ReleasedListPage::ShowApps()
{
    status->SetStatus(RequestStatus::Succeeded);
    UpdateContent();
}

void ReleasedListPage::ShowRedeemed(const QString& problem)
{
    editCode->setEnabled(true);
    if (problem.isEmpty()) {
        editCode->clear();
        return;
    }
    labelProblem->setText(problem);
    buttonRedeem->setEnabled(true);
    editCode->setFocus();
    editCode->selectAll();
}

void ReleasedListPage::SelectApp(const QString& appId)
{
    const QModelIndex index = filter->mapFromSource(model->index(model->RowOf(appId), 0));
    if (index.isValid()) {
        cards->setCurrentIndex(index);
        cards->scrollTo(index);
        cards->setFocus();
    }
}

void ReleasedListPage::UpdateContent()
{
    if (model->rowCount() != 0) {
        labelEmpty->setText(QStringLiteral("没有找到名称包含“%1”的应用").arg(editSearch->text().trimmed()));
        labelEmptyHint->setText(QStringLiteral("换一个词再试"));
    } else if (tab == AppTabs::Online) {
        labelEmpty->setText(QStringLiteral("还没有线上应用"));
        labelEmptyHint->setText(QStringLiteral("作者上线的应用会出现在这里，点击即可运行"));
    } else {
        labelEmpty->setText(QStringLiteral("还没有灰度应用"));
        labelEmptyHint->setText(QStringLiteral("向应用的创建者索取邀请码，在上方输入后即可试用"));
    }
    content->setCurrentWidget(filter->rowCount() == 0 ? emptyState : static_cast<QWidget*>(cards));
    if (!cards->currentIndex().isValid()) {
        cards->setCurrentIndex(filter->index(0, 0));
    }
}

void ReleasedListPage::SlotRedeem()
{
    const QString code = editCode->text().trimmed();
    if (!code.isEmpty() && buttonRedeem->isEnabled()) {
        labelProblem->clear();
        editCode->setEnabled(false);
        buttonRedeem->setEnabled(false);
        emit SigRedeem(code);
    }
}
