// SPDX-License-Identifier: Apache-2.0

#include "LogDelegate_p.h"
#include "LogModel_p.h"
#include "LogView_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbTheme.h>

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

namespace
{
constexpr int usualLine = 999; // the column has room for this many lines from the beginning

int RowHeight()
{
    return DpiTool::ScaleDefault(24);
}

int CellMargins()
{
    return DpiTool::ScaleDefault(24); // both sides of a cell, as the style sheet has them
}
} // namespace

LogView::LogView(LogModel* model, QWidget* parent) : QTableView(parent), lines(model)
{
    setModel(lines);
    setItemDelegate(new LogDelegate(this));
    setShowGrid(false);
    setWordWrap(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel); // a row may be higher than the view
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    BuildHint();
    fitting.setSingleShot(true);
    fitting.setInterval(0);
    DpiFollower::Follow(this, [this] { FitScale(); });
    connect(&fitting, &QTimer::timeout, this, &LogView::FitVisibleRows);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        atEnd = value == verticalScrollBar()->maximum();
        fitting.start();
    });
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        if (atEnd)
            scrollToBottom();
        fitting.start();
    });
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { emit SigChosen(index.row()); });
}

void LogView::FitScale()
{
    setFont(WbTheme::CodeFont());
    verticalHeader()->setDefaultSectionSize(RowHeight());
    setMinimumHeight(3 * RowHeight() + DpiTool::ScaleDefault(4));
    FitColumns();
    fitting.start();
}

void LogView::BuildHint()
{
    auto* layout = new QVBoxLayout(viewport());
    hint = new WbLabel;
    hint->setObjectName(QStringLiteral("emptyHint"));
    hint->setAlignment(Qt::AlignCenter);
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    layout->addWidget(hint);
    connect(lines, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { FitLineColumn(first, last); });
    connect(lines, &QAbstractItemModel::modelReset, this,
            [this] { FitLineColumn(0, lines->rowCount() - 1); });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(lines, signal, this, &LogView::ShowHint);
    connect(lines, &QAbstractItemModel::modelReset, this, &LogView::ShowHint);
}

void LogView::SetHint(const QString& text)
{
    hint->setText(text);
    ShowHint();
}

void LogView::ShowHint()
{
    hint->setVisible(lines->rowCount() == 0);
    fitting.start();
}

// Every time is equally long, so the columns need not be measured again with each line.
void LogView::FitColumns()
{
    const QFontMetrics metrics(font());
    highestLine = usualLine;
    setColumnWidth(LogModel::LineColumn,
                   metrics.horizontalAdvance(QString::number(highestLine)) + CellMargins());
    setColumnWidth(LogModel::TimeColumn,
                   metrics.horizontalAdvance(QStringLiteral("00:00:00.000")) + CellMargins());
    setColumnWidth(LogModel::LevelColumn,
                   metrics.horizontalAdvance(RpaLogLevelTitle(RpaLogLevel::Warning)) + CellMargins());
}

void LogView::FitLineColumn(int first, int last)
{
    const int before = highestLine;
    for (int row = first; row <= last; ++row)
        highestLine = qMax(highestLine, lines->GetLine(row).line);
    if (highestLine > before)
        setColumnWidth(LogModel::LineColumn,
                       QFontMetrics(font()).horizontalAdvance(QString::number(highestLine)) + CellMargins());
}

void LogView::Follow()
{
    atEnd = true;
    scrollToBottom();
}

void LogView::SetWraps(bool wanted)
{
    wraps = wanted;
    setWordWrap(wraps);
    lines->SetShowsWholeTexts(wraps);
    const bool followed = atEnd;
    if (!wraps)
        for (int row = 0; row < lines->rowCount(); ++row)
            setRowHeight(row, RowHeight());
    if (followed)
        Follow();
    fitting.start();
}

// Only what is seen is measured: a log may be long, and its texts, too.
void LogView::FitVisibleRows()
{
    if (!wraps || lines->rowCount() == 0)
        return;
    if (atEnd) {
        // From the newest line upwards, until the view is full.
        int room = viewport()->height();
        for (int row = lines->rowCount() - 1; row >= 0 && room > 0; --row) {
            resizeRowToContents(row);
            room -= rowHeight(row);
        }
        return;
    }
    for (int row = rowAt(0); row >= 0 && row < lines->rowCount(); ++row) {
        if (rowViewportPosition(row) > viewport()->height())
            break;
        resizeRowToContents(row);
    }
}

void LogView::keyPressEvent(QKeyEvent* event)
{
    const bool choosing = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (choosing && currentIndex().isValid())
        emit SigChosen(currentIndex().row());
    else
        QTableView::keyPressEvent(event);
}

void LogView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    const QModelIndex current = currentIndex();
    if (!hasFocus() || !current.isValid())
        return;
    const QRect row(0, rowViewportPosition(current.row()), viewport()->width(), rowHeight(current.row()));
    QPainter painter(viewport());
    painter.setPen(WbTheme::Instance()->Color(WbColor::FocusRing));
    painter.drawRect(row.adjusted(0, 0, -1, -1));
}

void LogView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    fitting.start();
}
