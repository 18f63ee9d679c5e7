// SPDX-License-Identifier: Apache-2.0

#include "AppLogWidget_p.h"
#include "LogModel_p.h"
#include "LogPlace_p.h"
#include "LogText_p.h"
#include "LogView_p.h"

#include <OxBase/DpiTool.h>
#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMetaMethod>
#include <QToolButton>

#include <algorithm>

IAppLogWidget::IAppLogWidget(QWidget* parent) : QWidget(parent) {}

IAppLogWidget::~IAppLogWidget() = default;

IAppLogWidget* IAppLogWidget::CreateDevelopLog(QWidget* parent)
{
    return new AppLogWidget(parent);
}

AppLogWidget::AppLogWidget(QWidget* parent)
    : IAppLogWidget(parent), model(new LogModel(this)), view(new LogView(model)), place(new LogPlace(this))
{
    setObjectName(QStringLiteral("AppLogWidget"));
    view->setObjectName(QStringLiteral("logView"));
    view->setAccessibleName(QStringLiteral("运行日志"));
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(4));
    auto* bar = new QWidget(this);
    barLayout = new QHBoxLayout(bar);
    barLayout->setContentsMargins(0, 0, 0, 0);
    barLayout->setSpacing(DpiTool::ScaleDefault(4));
    BuildFilter();
    BuildActions();
    layout->addWidget(bar);
    layout->addWidget(view, 1);
    setFocusProxy(view);
    connect(view, &LogView::SigChosen, this, &AppLogWidget::ShowPlace);
    connect(place, &LogPlace::SigChanged, this, &AppLogWidget::UpdatePlaceActions);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model, signal, this, &AppLogWidget::UpdateHint);
    connect(model, &QAbstractItemModel::modelReset, this, &AppLogWidget::UpdateHint);
    UpdateHint();
}

void AppLogWidget::BuildFilter()
{
    auto* title = new WbLabel(QStringLiteral("运行日志"));
    title->setObjectName(QStringLiteral("labelLogTitle"));
    barLayout->addWidget(title);
    barLayout->addSpacing(DpiTool::ScaleDefault(8));
    barLayout->addStretch();
    levelBox = new WbComboBox;
    levelBox->setObjectName(QStringLiteral("logLevel"));
    levelBox->setAccessibleName(QStringLiteral("日志级别"));
    for (const RpaLogLevel level :
         {RpaLogLevel::Debug, RpaLogLevel::Info, RpaLogLevel::Warning, RpaLogLevel::Error})
        levelBox->addItem(RpaLogLevelTitle(level), static_cast<int>(level));
    levelBox->setCurrentIndex(1);
    barLayout->addWidget(levelBox);
    filterEdit = new WbLineEdit;
    filterEdit->setObjectName(QStringLiteral("logFilter"));
    filterEdit->setPlaceholderText(QStringLiteral("筛选日志"));
    filterEdit->setClearButtonEnabled(true);
    filterEdit->setMaximumWidth(DpiTool::ScaleDefault(200));
    barLayout->addWidget(filterEdit);
    connect(levelBox, qOverload<int>(&QComboBox::currentIndexChanged), this, &AppLogWidget::ApplyFilter);
    connect(filterEdit, &QLineEdit::textChanged, this, &AppLogWidget::ApplyFilter);
}

QAction* AppLogWidget::Add(const char* name, const QString& text, const char* icon)
{
    auto* action = new QAction(text, view);
    action->setObjectName(QLatin1String(name));
    action->setIcon(WbIcons::Get(QLatin1String(icon)));
    view->addAction(action);
    return action;
}

QToolButton* AppLogWidget::AddButton(const char* name, QAction* action)
{
    auto* button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setDefaultAction(action);
    button->setAccessibleName(action->toolTip());
    barLayout->addWidget(button);
    return button;
}

void AppLogWidget::BuildActions()
{
    showPlace = Add("actionLogShow", QStringLiteral("转到写下这行日志的语句"), "find");
    showPlace->setVisible(false); // until somebody can show it
    showFailure = Add("actionLogFailure", QStringLiteral("查看失败时的变量和操作"), "clock");
    showFailure->setVisible(false);
    connect(showFailure, &QAction::triggered, this, &IAppLogWidget::SigShowFailure);
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { OfferFailure(current.row()); });
    wrap = Add("actionLogWrap", QStringLiteral("日志换行显示"), "wrap");
    wrap->setCheckable(true);
    AddButton("logWrap", wrap);
    QAction* copy = Add("actionLogCopy", QStringLiteral("复制日志"), "copy");
    copy->setToolTip(QStringLiteral("复制选中的日志，未选中时复制全部"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    AddButton("logCopy", copy);
    BuildSaving();
    QAction* clear = Add("actionLogClear", QStringLiteral("清空日志"), "delete");
    AddButton("logClear", clear);
    detach = Add("actionLogDetach", QString(), "pop-out");
    AddButton("logDetach", detach);
    enlarge = Add("actionLogEnlarge", QString(), "enlarge");
    AddButton("logEnlarge", enlarge);
    back = new QAction(this);
    back->setShortcut(Qt::Key_Escape);
    back->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(back);
    connect(showPlace, &QAction::triggered, this, [this] { ShowPlace(view->currentIndex().row()); });
    connect(wrap, &QAction::toggled, view, &LogView::SetWraps);
    connect(copy, &QAction::triggered, this, &AppLogWidget::Copy);
    connect(clear, &QAction::triggered, this, &AppLogWidget::Clear);
    connect(detach, &QAction::triggered, this,
            [this] { place->IsDetached() ? place->Return() : place->Detach(); });
    connect(enlarge, &QAction::triggered, this,
            [this] { place->IsEnlarged() ? place->Return() : place->Enlarge(); });
    connect(back, &QAction::triggered, place, &LogPlace::Return);
    UpdatePlaceActions();
}

void AppLogWidget::BuildSaving()
{
    QAction* all = Add("actionLogSave", QStringLiteral("保存全部日志…"), "save");
    QAction* filtered = Add("actionLogSaveFiltered", QStringLiteral("保存筛选出的日志…"), "filter");
    auto* both = new QAction(WbIcons::Get(QStringLiteral("save")), QString(), this);
    both->setToolTip(QStringLiteral("把日志保存为文件"));
    QToolButton* button = AddButton("logSave", both);
    auto* menu = new QMenu(button);
    menu->addAction(all);
    menu->addAction(filtered);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    connect(all, &QAction::triggered, this, [this] { Save(false); });
    connect(filtered, &QAction::triggered, this, [this] { Save(true); });
}

void AppLogWidget::UpdatePlaceActions()
{
    const auto state = [](QAction* action, bool out, const char* icon, const QString& text) {
        action->setText(text);
        action->setToolTip(out ? text + QStringLiteral(" (Esc)") : text);
        action->setIcon(WbIcons::Get(QLatin1String(icon)));
    };
    const bool large = place->IsEnlarged();
    const bool out = place->IsDetached();
    state(enlarge, large, large ? "shrink" : "enlarge",
          large ? QStringLiteral("还原日志的大小") : QStringLiteral("放大日志"));
    state(detach, out, out ? "dock" : "pop-out",
          out ? QStringLiteral("把日志放回页面") : QStringLiteral("在单独的窗口中显示日志"));
    enlarge->setVisible(!out);
    back->setEnabled(large || out);
    for (const char* name : {"logEnlarge", "logDetach"}) {
        auto* button = findChild<QToolButton*>(QLatin1String(name));
        button->setAccessibleName(button->defaultAction()->text());
        button->setVisible(button->defaultAction()->isVisible());
    }
}

void AppLogWidget::UpdateHint()
{
    const bool filtered = source && !source->GetLines().isEmpty();
    view->SetHint(filtered ? QStringLiteral("没有符合条件的日志")
                           : QStringLiteral("运行流程后，日志会显示在这里"));
}

void AppLogWidget::SetLogDataSource(IRpaLogDataSource* given)
{
    source = given;
    model->SetSource(given);
    view->Follow();
}

void AppLogWidget::ApplyFilter()
{
    model->SetFilter(static_cast<RpaLogLevel>(levelBox->currentData().toInt()), filterEdit->text().trimmed());
    view->Follow();
}

void AppLogWidget::Clear()
{
    if (source)
        source->Initialize();
}

void AppLogWidget::Copy()
{
    QVector<int> rows;
    const QModelIndexList selected = view->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    for (int row = 0; selected.isEmpty() && row < model->rowCount(); ++row)
        rows << row;
    QStringList texts;
    for (const int row : qAsConst(rows))
        texts << LogText::Of(model->GetLine(row));
    QGuiApplication::clipboard()->setText(texts.join(QLatin1Char('\n')));
}

void AppLogWidget::Save(bool filteredOnly)
{
    const QPointer<AppLogWidget> self(this);
    const QString path = WbSystemDialogs::SaveFile(
        this, QStringLiteral("保存日志"), QStringLiteral("运行日志.txt"), QStringLiteral("文本文件 (*.txt)"));
    if (path.isEmpty() || !self)
        return;
    LogText::Save(path, filteredOnly || !source ? model->GetLines() : source->GetLines());
}

// Who can show statements shows lines of programs, too.
void AppLogWidget::connectNotify(const QMetaMethod& signal)
{
    if (signal == QMetaMethod::fromSignal(&IAppLogWidget::SigShowStatement))
        showPlace->setVisible(true);
}

void AppLogWidget::OfferFailure(int row)
{
    static const QMetaMethod signal = QMetaMethod::fromSignal(&IAppLogWidget::SigShowFailure);
    showFailure->setVisible(row >= 0 && isSignalConnected(signal) &&
                            model->GetLine(row).level == RpaLogLevel::Error);
}

void AppLogWidget::ShowPlace(int row)
{
    if (row < 0)
        return;
    const RpaLogLine& line = model->GetLine(row);
    if (!line.statementId.isEmpty())
        emit SigShowStatement(line.statementId);
    else if (line.line > 0)
        emit SigShowLine(line.line);
}
