#include "AppLogWidget_p.h"
#include "LogModel_p.h"

#include <OxBase/DpiTool.h>
#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbTheme.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTableView>
#include <QToolButton>

IAppLogWidget::IAppLogWidget(QWidget* parent) : QWidget(parent) {}

IAppLogWidget::~IAppLogWidget() = default;

IAppLogWidget* IAppLogWidget::CreateDevelopLog(QWidget* parent)
{
    return new AppLogWidget(parent);
}

AppLogWidget::AppLogWidget(QWidget* parent)
    : IAppLogWidget(parent), model(new LogModel(this)), view(new QTableView)
{
    setObjectName(QStringLiteral("AppLogWidget"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(4));
    layout->addWidget(BuildBar());
    BuildView();
    layout->addWidget(view, 1);
}

AppLogWidget::~AppLogWidget() = default;

QWidget* AppLogWidget::BuildBar()
{
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(8));
    auto* title = new WbLabel(QStringLiteral("运行日志"));
    title->setObjectName(QStringLiteral("labelLogTitle"));
    layout->addWidget(title);
    layout->addStretch();

    levelBox = new WbComboBox;
    levelBox->setObjectName(QStringLiteral("logLevel"));
    levelBox->setAccessibleName(QStringLiteral("日志级别"));
    for (const RpaLogLevel level :
         {RpaLogLevel::Debug, RpaLogLevel::Info, RpaLogLevel::Warning, RpaLogLevel::Error})
        levelBox->addItem(RpaLogLevelTitle(level), static_cast<int>(level));
    levelBox->setCurrentIndex(1);
    layout->addWidget(levelBox);
    filterEdit = new WbLineEdit;
    filterEdit->setObjectName(QStringLiteral("logFilter"));
    filterEdit->setPlaceholderText(QStringLiteral("筛选日志"));
    filterEdit->setClearButtonEnabled(true);
    filterEdit->setMaximumWidth(DpiTool::ScaleDefault(200));
    layout->addWidget(filterEdit);
    connect(levelBox, qOverload<int>(&QComboBox::currentIndexChanged), this, &AppLogWidget::ApplyFilter);
    connect(filterEdit, &QLineEdit::textChanged, this, &AppLogWidget::ApplyFilter);

    const auto add = [&](const QString& name, const QString& icon, const QString& tip) {
        auto* button = new QToolButton;
        button->setObjectName(name);
        button->setAutoRaise(true);
        button->setIcon(WbIcons::Get(icon));
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        layout->addWidget(button);
        return button;
    };
    connect(add(QStringLiteral("logCopy"), QStringLiteral("copy"),
                QStringLiteral("复制选中的日志，未选中时复制全部")),
            &QToolButton::clicked, this, &AppLogWidget::Copy);
    connect(add(QStringLiteral("logClear"), QStringLiteral("delete"), QStringLiteral("清空日志")),
            &QToolButton::clicked, this, [this] {
                if (source)
                    source->Initialize();
            });
    return bar;
}

void AppLogWidget::BuildView()
{
    view->setObjectName(QStringLiteral("logView"));
    view->setAccessibleName(QStringLiteral("运行日志"));
    view->setModel(model);
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false);
    view->setFont(WbTheme::CodeFont());
    view->verticalHeader()->hide();
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(24));
    view->horizontalHeader()->hide();
    view->horizontalHeader()->setStretchLastSection(true);
    FitColumns();
    view->setMinimumHeight(3 * view->verticalHeader()->defaultSectionSize() + DpiTool::ScaleDefault(4));
    view->installEventFilter(this);
    BuildHint();

    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int value) { atEnd = value == view->verticalScrollBar()->maximum(); });
    connect(view->verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        if (atEnd)
            view->scrollToBottom();
    });
    connect(view, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { ShowStatement(index.row()); });
}

// Every time is equally long, so the columns need not be measured again with each line.
void AppLogWidget::FitColumns()
{
    const QFontMetrics metrics(view->font());
    const int margins = DpiTool::ScaleDefault(24); // both sides of a cell, as the style sheet has them
    view->setColumnWidth(LogModel::TimeColumn,
                         metrics.horizontalAdvance(QStringLiteral("00:00:00.000")) + margins);
    view->setColumnWidth(LogModel::LevelColumn,
                         metrics.horizontalAdvance(RpaLogLevelTitle(RpaLogLevel::Warning)) + margins);
}

void AppLogWidget::BuildHint()
{
    auto* hintLayout = new QVBoxLayout(view->viewport());
    emptyHint = new WbLabel;
    emptyHint->setObjectName(QStringLiteral("emptyHint"));
    emptyHint->setAlignment(Qt::AlignCenter);
    emptyHint->setAttribute(Qt::WA_TransparentForMouseEvents);
    hintLayout->addWidget(emptyHint);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model, signal, this, &AppLogWidget::UpdateHint);
    connect(model, &QAbstractItemModel::modelReset, this, &AppLogWidget::UpdateHint);
    UpdateHint();
}

void AppLogWidget::UpdateHint()
{
    emptyHint->setVisible(model->rowCount() == 0);
    if (model->rowCount() > 0)
        return;
    const bool filtered = source && !source->GetLines().isEmpty();
    emptyHint->setText(filtered ? QStringLiteral("没有符合条件的日志")
                                : QStringLiteral("运行流程后，日志会显示在这里"));
}

void AppLogWidget::SetLogDataSource(IRpaLogDataSource* given)
{
    source = given;
    atEnd = true;
    model->SetSource(given);
    view->scrollToBottom();
}

void AppLogWidget::ApplyFilter()
{
    model->SetFilter(static_cast<RpaLogLevel>(levelBox->currentData().toInt()), filterEdit->text().trimmed());
    atEnd = true;
    view->scrollToBottom();
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
    for (const int row : qAsConst(rows)) {
        const RpaLogLine& line = model->GetLine(row);
        texts << QStringLiteral("%1 [%2] %3")
                     .arg(line.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")),
                          RpaLogLevelTitle(line.level), line.text);
    }
    QGuiApplication::clipboard()->setText(texts.join(QLatin1Char('\n')));
}

void AppLogWidget::ShowStatement(int row)
{
    const QString statementId = model->GetLine(row).statementId;
    if (!statementId.isEmpty())
        emit SigShowStatement(statementId);
}

bool AppLogWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy)) {
            Copy();
            return true;
        }
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && view->currentIndex().isValid()) {
            ShowStatement(view->currentIndex().row());
            return true;
        }
    }
    return IAppLogWidget::eventFilter(watched, event);
}
