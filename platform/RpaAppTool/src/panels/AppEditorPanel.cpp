// SPDX-License-Identifier: Apache-2.0

#include "ColumnFitter_p.h"
#include "RecordDelegate_p.h"
#include "RecordModel_p.h"
#include "ShrinkPanel_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaPageEdits.h>
#include <RpaAppTool/AppEditorPanel.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbToast.h>

#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QStackedLayout>
#include <QTableView>
#include <QToolButton>
#include <QUndoStack>
#include <QVBoxLayout>

class AppEditorPanel::Private : public ShrinkPanel
{
public:
    Private(const QString& panelTitle, const QString& recordName, const QString& emptyHint);

    void Show(RecordModel* model);
    void UpdateShown();

    QUndoStack undoStack;
    RpaAppDataPtr appData;
    QPointer<QWidget> shown;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildView();
    QToolButton* AddButton(const QString& icon, const QString& tip, const std::function<void()>& act);
    bool HandleKey(QKeyEvent* event);
    void Add();
    void RemoveSelected();
    void MoveCurrent(int by);
    void UpdateState();
    QVector<int> SelectedRows() const;

    QTableView* const view;
    WbLabel* const emptyLabel;
    QStackedLayout* const stack;
    RecordModel* model = nullptr;
    QToolButton* removeButton;
    QToolButton* upButton;
    QToolButton* downButton;
};

AppEditorPanel::Private::Private(const QString& panelTitle, const QString& recordName,
                                 const QString& emptyHint)
    : ShrinkPanel(panelTitle), view(new QTableView), emptyLabel(new WbLabel(emptyHint)),
      stack(new QStackedLayout)
{
    AddButton(QStringLiteral("add"), QStringLiteral("添加%1").arg(recordName), [this] {
        Add();
    })->setObjectName(QStringLiteral("recordAdd"));
    upButton =
        AddButton(QStringLiteral("move-up"), QStringLiteral("上移（Alt+↑）"), [this] { MoveCurrent(-1); });
    downButton =
        AddButton(QStringLiteral("move-down"), QStringLiteral("下移（Alt+↓）"), [this] { MoveCurrent(1); });
    removeButton =
        AddButton(QStringLiteral("delete"), QStringLiteral("删除选中的%1 (Delete)").arg(recordName),
                  [this] { RemoveSelected(); });
    removeButton->setObjectName(QStringLiteral("recordDelete"));
    view->setAccessibleName(panelTitle);
    BuildView();
    emptyLabel->setAlignment(Qt::AlignCenter);
    emptyLabel->setWordWrap(true);
    emptyLabel->setObjectName(QStringLiteral("emptyHint"));

    auto* holder = new QWidget;
    holder->setLayout(stack);
    stack->addWidget(view);
    stack->addWidget(emptyLabel);
    SetContent(holder);
    WbEditHistory::Instance()->Watch(&undoStack, this);
}

QToolButton* AppEditorPanel::Private::AddButton(const QString& icon, const QString& tip,
                                                const std::function<void()>& act)
{
    QToolButton* const button = AddAction(icon, tip);
    connect(button, &QToolButton::clicked, this, act);
    return button;
}

void AppEditorPanel::Private::BuildView()
{
    view->setObjectName(QStringLiteral("recordView"));
    view->setItemDelegate(new RecordDelegate(view));
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    view->setTabKeyNavigation(false);
    view->setWordWrap(false);
    view->verticalHeader()->hide();
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    DpiFollower::Follow(view, [view = view] {
        view->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(32));
        view->setMinimumHeight(DpiTool::ScaleDefault(58));
    });
    view->installEventFilter(this);
}

void AppEditorPanel::Private::Show(RecordModel* given)
{
    model = given;
    view->setModel(model);
    new ColumnFitter(view);
    connect(model, &RecordModel::SigRefused, this,
            [](const QString& reason) { WbToast::Show(reason, ToastWarning); });
    connect(model, &QAbstractItemModel::modelReset, this, &Private::UpdateState);
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &Private::UpdateState);
    UpdateState();
}

void AppEditorPanel::Private::Add()
{
    if (!model->AddRecord())
        return;
    const QModelIndex fresh = model->index(model->rowCount() - 1, 0);
    SetShrink(false);
    view->setFocus();
    view->setCurrentIndex(fresh);
    view->scrollTo(fresh);
    view->edit(fresh);
}

void AppEditorPanel::Private::RemoveSelected()
{
    const QVector<int> rows = SelectedRows();
    if (rows.isEmpty() || !model->RemoveRecords(rows))
        return;
    view->selectRow(qMin(rows.first(), model->rowCount() - 1));
}

void AppEditorPanel::Private::MoveCurrent(int by)
{
    const int from = view->currentIndex().row();
    if (from >= 0 && model->MoveRecord(from, from + by))
        view->selectRow(from + by);
}

QVector<int> AppEditorPanel::Private::SelectedRows() const
{
    QVector<int> rows;
    const QModelIndexList indexes = view->selectionModel()->selectedRows();
    for (const QModelIndex& index : indexes)
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void AppEditorPanel::Private::UpdateState()
{
    UpdateShown();
    SetCount(model->rowCount());
    stack->setCurrentIndex(model->rowCount() > 0 ? 0 : 1);
    const QVector<int> rows = SelectedRows();
    removeButton->setEnabled(!rows.isEmpty());
    upButton->setEnabled(rows.size() == 1 && rows.first() > 0);
    downButton->setEnabled(rows.size() == 1 && rows.first() < model->rowCount() - 1);
}

void AppEditorPanel::Private::UpdateShown()
{
    if (shown)
        shown->setVisible(model->rowCount() > 0);
}

// The view would take arrows and Delete for itself.
bool AppEditorPanel::Private::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view && event->type() == QEvent::KeyPress && HandleKey(static_cast<QKeyEvent*>(event)))
        return true;
    return ShrinkPanel::eventFilter(watched, event);
}

bool AppEditorPanel::Private::HandleKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo))
        undoStack.undo();
    else if (event->matches(QKeySequence::Redo))
        undoStack.redo();
    else if (event->matches(QKeySequence::Delete))
        RemoveSelected();
    else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Up)
        MoveCurrent(-1);
    else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Down)
        MoveCurrent(1);
    else
        return false;
    return true;
}

AppEditorPanel::AppEditorPanel(const QString& title, const QString& recordName, const QString& emptyHint,
                               QWidget* parent)
    : QWidget(parent), d(new Private(title, recordName, emptyHint))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d);
    // A folded panel gives its room to the others.
    connect(d, &ShrinkPanel::SigShrinkChanged, this, [this] { setSizePolicy(d->sizePolicy()); });
    connect(d, &ShrinkPanel::SigShrinkChanged, this, &AppEditorPanel::SigShrinkChanged);
}

void AppEditorPanel::SetAppDataPtr(const RpaAppDataPtr& appData)
{
    d->appData = appData;
    if (appData)
        RpaPageEdits::Of(appData.data()); // knows the pages before they are changed
}

RpaAppDataPtr AppEditorPanel::GetAppData() const
{
    return d->appData;
}

QUndoStack& AppEditorPanel::GetUndoStack() const
{
    return d->undoStack;
}

bool AppEditorPanel::IsShrink() const
{
    return d->IsShrink();
}

void AppEditorPanel::SetModel(RecordModel* model)
{
    d->Show(model);
    connect(model, &RecordModel::SigDataChanged, this, [this] {
        // What a run writes into its page is its result, not an edit of the app.
        if (d->appData && !RpaProcessRelatedUIControler::Instance()->IsRunning())
            RpaPageEdits::Of(d->appData.data())->Edited();
    });
}

void AppEditorPanel::SetShown(QWidget* widget)
{
    d->shown = widget;
    d->UpdateShown();
}
