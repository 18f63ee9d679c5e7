// SPDX-License-Identifier: Apache-2.0

#include "ValueModel_p.h"
#include "WatchesPane_p.h"
#include "WhyEmpty_p.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QAction>
#include <QKeyEvent>

namespace
{
RpaDebugValue Unknown(const QString& expression)
{
    RpaDebugValue value;
    value.name = expression;
    return value;
}
} // namespace

WatchesPane::WatchesPane(DebugFocus* debugFocus, QWidget* parent)
    : QWidget(parent), focus(debugFocus), model(new ValueModel(debugFocus->Source(), this))
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.lineEditExpression->setMaxLength(4000);
    ui.lineEditExpression->installEventFilter(this);
    ui.watchView->setModel(model);
    const DebugSource* source = focus->Source();
    connect(focus, &DebugFocus::SigChanged, this, &WatchesPane::SlotFrame);
    connect(focus, &DebugFocus::SigWatchesChanged, this, &WatchesPane::SlotList);
    connect(source, &DebugSource::SigWatches, this, &WatchesPane::SlotWatches);
    connect(source, &DebugSource::SigAnswer, this, &WatchesPane::SlotAnswer);
    connect(ui.watchView, &ValueView::SigMoreAsked, model, &ValueModel::LoadMore);
    auto* remove = new QAction(QStringLiteral("删除表达式"), ui.watchView);
    remove->setObjectName(QStringLiteral("actionRemoveWatch"));
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    ui.watchView->addAction(remove);
    connect(remove, &QAction::triggered, this, &WatchesPane::RemoveCurrent);
    connect(ui.buttonWatch, &QPushButton::clicked, this, &WatchesPane::AddWatch);
    connect(ui.buttonOnce, &QPushButton::clicked, this, &WatchesPane::EvaluateOnce);
    SlotFrame();
}

void WatchesPane::SlotList()
{
    once.clear();
    ShowWithout();
    if (focus->GetFrame() > 0)
        Refresh();
}

// The expressions alone; their values follow while the program stands still.
void WatchesPane::ShowWithout()
{
    requests.clear();
    expressions = focus->GetWatches();
    QVector<RpaDebugValue> values;
    for (const QString& expression : qAsConst(expressions))
        values.append(Unknown(expression));
    if (!once.isEmpty())
        values.append(Unknown(once));
    model->SetRoots(values, focus->GetFrame());
    ui.labelWhy->setText(focus->Source()->IsPaused()
                             ? QStringLiteral("输入表达式，查看它的值")
                             : WhyEmpty(focus->Source()->GetState(), QStringLiteral("表达式的值")));
    ui.stack->setCurrentWidget(values.isEmpty() ? ui.pageWhy : ui.pageValues);
}

void WatchesPane::SlotFrame()
{
    once.clear();
    ui.buttonOnce->setEnabled(focus->Source()->IsPaused());
    ShowWithout();
    if (focus->Source()->IsPaused() && focus->GetFrame() > 0)
        Refresh();
}

void WatchesPane::Refresh()
{
    requests.clear();
    for (int row = 0; row < expressions.size(); ++row)
        Ask(expressions.at(row), row);
}

void WatchesPane::Ask(const QString& expression, int row)
{
    const int request = focus->Source()->Evaluate(focus->GetFrame(), expression);
    if (request > 0)
        requests.insert(request, row);
}

void WatchesPane::SlotWatches(const QVector<RpaDebugValue>& values)
{
    // Of a list that was changed meanwhile, or of the innermost call while another is looked at.
    if (values.size() != expressions.size() || focus->GetFrame() > 0)
        return;
    for (int row = 0; row < values.size(); ++row) {
        RpaDebugValue value = values.at(row);
        value.name = expressions.at(row);
        model->SetRoot(row, value);
    }
}

void WatchesPane::SlotAnswer(const RpaDebugAnswer& answer)
{
    if (!requests.contains(answer.request))
        return;
    const int row = requests.take(answer.request);
    RpaDebugValue value = answer.values.value(0);
    value.name = row < expressions.size() ? expressions.at(row) : once;
    value.error = answer.ok ? QString() : answer.error;
    model->SetRoot(row, value);
}

void WatchesPane::AddWatch()
{
    const QString expression = ui.lineEditExpression->text().trimmed();
    if (expression.isEmpty())
        return;
    ui.lineEditExpression->clear();
    if (expressions.contains(expression) || expressions.size() >= RpaDebugSession::entriesPerPage)
        return;
    focus->SetWatches(expressions + QStringList(expression));
}

void WatchesPane::EvaluateOnce()
{
    const QString expression = ui.lineEditExpression->text().trimmed();
    if (expression.isEmpty() || !focus->Source()->IsPaused())
        return;
    once = expression;
    ShowWithout();
    // It may have changed anything.
    Refresh();
    Ask(once, expressions.size());
}

void WatchesPane::RemoveCurrent()
{
    const QModelIndex index = ui.watchView->currentIndex();
    if (!index.isValid() || index.parent().isValid())
        return;
    if (index.row() >= expressions.size()) {
        once.clear();
        ShowWithout();
        Refresh();
        return;
    }
    const int row = index.row();
    QStringList left = expressions;
    left.removeAt(row);
    focus->SetWatches(left);
    ui.watchView->setCurrentIndex(model->index(qMin(row, left.size() - 1), 0)); // the next one
}

bool WatchesPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == ui.lineEditExpression && enter) {
        if (key->modifiers().testFlag(Qt::ControlModifier))
            EvaluateOnce();
        else
            AddWatch();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
