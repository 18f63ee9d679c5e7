#include "CommandTexts_p.h"
#include "StatementFindBar_p.h"
#include "StatementView_p.h"

#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLineEdit.h>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace
{
bool Contains(const RpaStatement& values, const QString& text)
{
    if (CommandTexts::Title(values.command).contains(text, Qt::CaseInsensitive) ||
        values.note.contains(text, Qt::CaseInsensitive) || values.output.contains(text, Qt::CaseInsensitive))
        return true;
    return std::any_of(values.arguments.begin(), values.arguments.end(), [&text](const QString& argument) {
        return argument.contains(text, Qt::CaseInsensitive);
    });
}

QToolButton* AddButton(QHBoxLayout* layout, const QString& icon, const QString& name, const QString& tip)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(WbIcons::Get(icon));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    layout->addWidget(button);
    return button;
}
} // namespace

StatementFindBar::StatementFindBar(StatementView* searched, QWidget* parent)
    : QWidget(parent), view(searched), edit(new WbLineEdit), count(new QLabel)
{
    setObjectName(QStringLiteral("statementFindBar"));
    edit->setObjectName(QStringLiteral("lineEditStatementFind"));
    edit->setPlaceholderText(QStringLiteral("在流程中查找"));
    edit->setAccessibleName(QStringLiteral("在流程中查找"));
    edit->setClearButtonEnabled(true);
    edit->setMaximumWidth(280);
    count->setObjectName(QStringLiteral("labelStatementCount"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(edit);
    auto* previous =
        AddButton(layout, QStringLiteral("chevron-up"), QStringLiteral("statementPreviousButton"),
                  QStringLiteral("上一个（Shift+F3）"));
    auto* next = AddButton(layout, QStringLiteral("chevron-down"), QStringLiteral("statementNextButton"),
                           QStringLiteral("下一个（F3）"));
    layout->addWidget(count);
    layout->addStretch();
    auto* close = AddButton(layout, QStringLiteral("close"), QStringLiteral("statementFindCloseButton"),
                            QStringLiteral("关闭（Esc）"));
    connect(edit, &QLineEdit::textChanged, this, &StatementFindBar::SlotTextChanged);
    connect(previous, &QToolButton::clicked, this, &StatementFindBar::FindPrevious);
    connect(next, &QToolButton::clicked, this, &StatementFindBar::FindNext);
    connect(close, &QToolButton::clicked, this, &StatementFindBar::Close);
    hide();
}

void StatementFindBar::Open()
{
    show();
    edit->setFocus();
    edit->selectAll();
}

void StatementFindBar::Close()
{
    hide();
    view->setFocus();
}

void StatementFindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Find(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
        return;
    case Qt::Key_Escape:
        Close();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void StatementFindBar::SlotTextChanged()
{
    const QStringList ids = Matches();
    const int found = ids.size();
    count->setText(edit->text().isEmpty() ? QString()
                   : found == 0           ? QStringLiteral("没有找到")
                                          : QStringLiteral("共 %1 处").arg(found));
    const QString current = view->currentIndex().data(StatementModel::IdRole).toString();
    if (found > 0 && !ids.contains(current))
        FindNext();
}

QStringList StatementFindBar::Matches() const
{
    QStringList ids;
    const RpaProcess* process = view->Statements()->Process();
    const QString text = edit->text().trimmed();
    if (!process || text.isEmpty())
        return ids;
    process->ForEach([&ids, &text](const RpaStatementNode& node) {
        if (Contains(node.GetValues(), text))
            ids.append(node.GetId());
    });
    return ids;
}

void StatementFindBar::Find(int direction)
{
    const QStringList ids = Matches();
    if (ids.isEmpty())
        return;
    const StatementModel* model = view->Statements();
    const int here = view->currentIndex().data(StatementModel::LineRole).toInt();
    const auto lineOf = [model](const QString& id) {
        return model->IndexOf(id).data(StatementModel::LineRole).toInt();
    };
    QString target = direction > 0 ? ids.first() : ids.last(); // around the end
    if (direction > 0) {
        const auto next =
            std::find_if(ids.begin(), ids.end(), [&](const QString& id) { return lineOf(id) > here; });
        target = next != ids.end() ? *next : target;
    } else {
        const auto next =
            std::find_if(ids.rbegin(), ids.rend(), [&](const QString& id) { return lineOf(id) < here; });
        target = next != ids.rend() ? *next : target;
    }
    view->Select({target});
}
