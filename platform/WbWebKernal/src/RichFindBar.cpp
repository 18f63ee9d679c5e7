#include "RichFindBar_p.h"
#include "RichIcons_p.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTextEdit>
#include <QToolButton>

namespace
{
constexpr int maximumMarks = 500;

QToolButton* AddButton(QHBoxLayout* layout, RichGlyph glyph, const QString& name, const QString& tip)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(RichIcon(glyph));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    layout->addWidget(button);
    return button;
}
} // namespace

RichFindBar::RichFindBar(QTextEdit* searched, QWidget* parent)
    : QWidget(parent), view(searched), edit(new QLineEdit), count(new QLabel)
{
    setObjectName(QStringLiteral("richFindBar"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    edit->setObjectName(QStringLiteral("lineEditFind"));
    edit->setPlaceholderText(QStringLiteral("查找"));
    edit->setAccessibleName(QStringLiteral("查找"));
    edit->setClearButtonEnabled(true);
    edit->setMaximumWidth(280);
    count->setObjectName(QStringLiteral("labelFindCount"));
    layout->addWidget(edit);
    QToolButton* previous = AddButton(layout, RichGlyph::Up, QStringLiteral("toolFindPrevious"),
                                      QStringLiteral("上一个（Shift+F3）"));
    QToolButton* next =
        AddButton(layout, RichGlyph::Down, QStringLiteral("toolFindNext"), QStringLiteral("下一个（F3）"));
    layout->addWidget(count);
    layout->addStretch();
    QToolButton* close =
        AddButton(layout, RichGlyph::Close, QStringLiteral("toolFindClose"), QStringLiteral("关闭（Esc）"));

    connect(edit, &QLineEdit::textChanged, this, &RichFindBar::SlotTextEdited);
    connect(previous, &QToolButton::clicked, this, &RichFindBar::FindPrevious);
    connect(next, &QToolButton::clicked, this, &RichFindBar::FindNext);
    connect(close, &QToolButton::clicked, this, &RichFindBar::Close);
    hide();
}

void RichFindBar::Open()
{
    const QString selected = view->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        edit->setText(selected);
    show();
    edit->setFocus();
    edit->selectAll();
    MarkAll();
}

void RichFindBar::Close()
{
    hide();
    view->setExtraSelections({});
    view->setFocus();
}

void RichFindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Find(event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    case Qt::Key_Escape:
        Close();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void RichFindBar::SlotTextEdited()
{
    MarkAll();
    QTextCursor cursor = view->textCursor();
    cursor.setPosition(cursor.selectionStart());
    view->setTextCursor(cursor);
    Find(false);
}

void RichFindBar::Find(bool backward)
{
    const QString wanted = edit->text();
    if (wanted.isEmpty())
        return;
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (view->find(wanted, flags))
        return;
    QTextCursor around =
        view->document()->find(wanted, backward ? view->document()->characterCount() - 1 : 0, flags);
    if (!around.isNull())
        view->setTextCursor(around);
}

void RichFindBar::MarkAll()
{
    QList<QTextEdit::ExtraSelection> marks;
    QTextCursor found(view->document());
    const QString wanted = edit->text();
    while (!wanted.isEmpty() && marks.size() < maximumMarks) {
        found = view->document()->find(wanted, found);
        if (found.isNull())
            break;
        QTextEdit::ExtraSelection mark;
        mark.cursor = found;
        mark.format.setBackground(QColor(255, 193, 7, 110));
        marks.append(mark);
    }
    view->setExtraSelections(marks);
    if (wanted.isEmpty())
        count->clear();
    else if (marks.isEmpty())
        count->setText(QStringLiteral("没有找到"));
    else
        count->setText(QStringLiteral("共 %1 处%2")
                           .arg(marks.size())
                           .arg(marks.size() == maximumMarks ? QStringLiteral("以上") : QString()));
}
