#include "CodeEdit_p.h"
#include "CodeFindBar_p.h"

#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace
{
constexpr int maximumMarks = 1000;

QToolButton* AddButton(QHBoxLayout* row, const QString& icon, const QString& name, const QString& tip)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(WbIcons::Get(icon));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    row->addWidget(button);
    return button;
}
} // namespace

CodeFindBar::CodeFindBar(CodeEdit* searched, QWidget* parent)
    : QWidget(parent), edit(searched), findEdit(new WbLineEdit), replaceEdit(new WbLineEdit),
      caseBox(new QCheckBox(QStringLiteral("区分大小写"))),
      wordBox(new QCheckBox(QStringLiteral("整个单词"))), count(new QLabel), replaceRow(new QWidget)
{
    setObjectName(QStringLiteral("codeFindBar"));
    findEdit->setObjectName(QStringLiteral("lineEditFind"));
    findEdit->setPlaceholderText(QStringLiteral("查找"));
    findEdit->setAccessibleName(QStringLiteral("查找"));
    findEdit->setFixedWidth(260);
    replaceEdit->setObjectName(QStringLiteral("lineEditReplace"));
    replaceEdit->setPlaceholderText(QStringLiteral("替换为"));
    replaceEdit->setAccessibleName(QStringLiteral("替换为"));
    replaceEdit->setFixedWidth(260);
    caseBox->setObjectName(QStringLiteral("checkBoxCase"));
    wordBox->setObjectName(QStringLiteral("checkBoxWord"));
    count->setObjectName(QStringLiteral("labelFindCount"));

    auto* top = new QHBoxLayout;
    top->addWidget(findEdit);
    auto* previous = AddButton(top, QStringLiteral("chevron-up"), QStringLiteral("findPreviousButton"),
                               QStringLiteral("上一个（Shift+F3）"));
    auto* next = AddButton(top, QStringLiteral("chevron-down"), QStringLiteral("findNextButton"),
                           QStringLiteral("下一个（F3）"));
    top->addWidget(caseBox);
    top->addSpacing(12);
    top->addWidget(wordBox);
    top->addSpacing(12);
    top->addWidget(count);
    top->addStretch();
    auto* close = AddButton(top, QStringLiteral("close"), QStringLiteral("findCloseButton"),
                            QStringLiteral("关闭（Esc）"));
    auto* replaceLayout = new QHBoxLayout(replaceRow);
    replaceLayout->setContentsMargins(0, 0, 0, 0);
    auto* one = new WbPushButton;
    one->setObjectName(QStringLiteral("replaceButton"));
    one->setText(QStringLiteral("替换"));
    auto* all = new WbPushButton;
    all->setObjectName(QStringLiteral("replaceAllButton"));
    all->setText(QStringLiteral("全部替换"));
    replaceLayout->addWidget(replaceEdit);
    replaceLayout->addWidget(one);
    replaceLayout->addWidget(all);
    replaceLayout->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setSpacing(4);
    layout->addLayout(top);
    layout->addWidget(replaceRow);

    connect(findEdit, &QLineEdit::textChanged, this, &CodeFindBar::SlotChanged);
    connect(caseBox, &QCheckBox::toggled, this, &CodeFindBar::SlotChanged);
    connect(wordBox, &QCheckBox::toggled, this, &CodeFindBar::SlotChanged);
    connect(previous, &QToolButton::clicked, this, &CodeFindBar::FindPrevious);
    connect(next, &QToolButton::clicked, this, &CodeFindBar::FindNext);
    connect(close, &QToolButton::clicked, this, &CodeFindBar::Close);
    connect(one, &QPushButton::clicked, this, &CodeFindBar::ReplaceCurrent);
    connect(all, &QPushButton::clicked, this, &CodeFindBar::ReplaceAll);
    hide();
}

void CodeFindBar::Open(bool withReplace)
{
    const QString selected = edit->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        findEdit->setText(selected);
    replaceRow->setVisible(withReplace);
    show();
    findEdit->setFocus();
    findEdit->selectAll();
    MarkAll();
}

void CodeFindBar::Close()
{
    hide();
    edit->SetFoundMarks({});
    edit->setFocus();
}

QTextDocument::FindFlags CodeFindBar::Flags() const
{
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindCaseSensitively, caseBox->isChecked());
    flags.setFlag(QTextDocument::FindWholeWords, wordBox->isChecked());
    return flags;
}

void CodeFindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (replaceEdit->hasFocus())
            ReplaceCurrent();
        else
            Find(event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    case Qt::Key_Escape:
        Close();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void CodeFindBar::SlotChanged()
{
    MarkAll();
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(cursor.selectionStart());
    edit->setTextCursor(cursor);
    Find(false);
}

void CodeFindBar::Find(bool backward)
{
    QTextDocument::FindFlags flags = Flags();
    flags.setFlag(QTextDocument::FindBackward, backward);
    const QString wanted = findEdit->text();
    if (wanted.isEmpty() || edit->find(wanted, flags))
        return;
    QTextCursor edge(edit->document());
    edge.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
    const QTextCursor around = edit->document()->find(wanted, edge, flags);
    if (!around.isNull())
        edit->setTextCursor(around);
}

void CodeFindBar::MarkAll()
{
    QList<QTextEdit::ExtraSelection> marks;
    const QString wanted = findEdit->text();
    QTextCursor found(edit->document());
    while (!wanted.isEmpty() && marks.size() < maximumMarks) {
        found = edit->document()->find(wanted, found, Flags());
        if (found.isNull())
            break;
        QTextEdit::ExtraSelection mark;
        mark.cursor = found;
        mark.format.setBackground(QColor(255, 193, 7, 90));
        marks.append(mark);
    }
    edit->SetFoundMarks(marks);
    if (wanted.isEmpty())
        count->clear();
    else if (marks.isEmpty())
        count->setText(QStringLiteral("没有找到"));
    else
        count->setText(QStringLiteral("共 %1 处%2")
                           .arg(marks.size())
                           .arg(marks.size() == maximumMarks ? QStringLiteral("以上") : QString()));
}

void CodeFindBar::ReplaceCurrent()
{
    QTextCursor cursor = edit->textCursor();
    const Qt::CaseSensitivity sensitivity = caseBox->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (cursor.hasSelection() && cursor.selectedText().compare(findEdit->text(), sensitivity) == 0)
        cursor.insertText(replaceEdit->text());
    Find(false);
    MarkAll();
}

void CodeFindBar::ReplaceAll()
{
    const QString wanted = findEdit->text();
    if (wanted.isEmpty())
        return;
    // One step for undo, and one announcement of the text instead of thousands.
    QTextCursor step(edit->document());
    step.beginEditBlock();
    QTextCursor found = edit->document()->find(wanted, 0, Flags());
    while (!found.isNull()) {
        found.insertText(replaceEdit->text());
        found = edit->document()->find(wanted, found, Flags());
    }
    step.endEditBlock();
    MarkAll();
}
