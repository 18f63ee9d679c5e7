// SPDX-License-Identifier: Apache-2.0

#include "CodeExplanation_p.h"
#include "CompletionItems_p.h"
#include "PythonWords_p.h"

#include <WbBaseUI/UIUtils.h>

#include <QHelpEvent>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QToolTip>

namespace
{
constexpr int mostTipLines = 30;
constexpr int longestTipLine = 120;

QString Shortened(const QString& text)
{
    QStringList lines = text.trimmed().split(QLatin1Char('\n'));
    const bool isCut = lines.size() > mostTipLines;
    lines = lines.mid(0, mostTipLines);
    for (QString& line : lines)
        if (line.size() > longestTipLine)
            line = line.left(longestTipLine) + QStringLiteral("…");
    if (isCut)
        lines.append(QStringLiteral("…"));
    return lines.join(QLatin1Char('\n'));
}

QString HeadOf(const QVariantMap& name)
{
    const QStringList heads = name.value(QStringLiteral("heads")).toStringList();
    if (!heads.isEmpty())
        return heads.join(QLatin1Char('\n'));
    QString head = CompletionLists::KindText(name.value(QStringLiteral("kind")).toString()) +
                   QLatin1Char(' ') + name.value(QStringLiteral("name")).toString();
    const QStringList values = name.value(QStringLiteral("values")).toStringList();
    if (!values.isEmpty())
        head += QStringLiteral("：") + values.join(QStringLiteral("、"));
    return head.trimmed();
}
} // namespace

CodeExplanation::CodeExplanation(QPlainTextEdit* codeEdit, CodeQuestions* codeQuestions)
    : QObject(codeEdit), edit(codeEdit), questions(codeQuestions)
{
    edit->viewport()->installEventFilter(this);
}

QString CodeExplanation::TextOf(const QVariantMap& answer)
{
    QStringList parts;
    const QVariantList names = answer.value(QStringLiteral("names")).toList();
    for (const QVariant& each : names) {
        const QVariantMap name = each.toMap();
        const QString text = name.value(QStringLiteral("text")).toString();
        QString part = HeadOf(name);
        if (!text.trimmed().isEmpty())
            part += QStringLiteral("\n\n") + text.trimmed();
        if (!parts.contains(part))
            parts.append(part);
    }
    return Shortened(parts.join(QStringLiteral("\n\n")));
}

void CodeExplanation::Ask()
{
    const QTextCursor cursor = edit->textCursor();
    AskAt(cursor.position(), edit->viewport()->mapToGlobal(edit->cursorRect(cursor).bottomLeft()));
}

void CodeExplanation::SlotHover(const QHelpEvent& event)
{
    const QTextCursor cursor = edit->cursorForPosition(event.pos());
    const QRect drawn = edit->cursorRect(cursor);
    const bool isBeside = cursor.atBlockEnd() && event.pos().x() > drawn.right();
    if (!isBeside)
        AskAt(cursor.position(), event.globalPos());
}

// The tip goes when the pointer leaves the name.
QRect CodeExplanation::NameRect(int offset) const
{
    QTextCursor cursor(edit->document());
    cursor.setPosition(PythonWords::BeginOf(*edit->document(), offset));
    const QRect begin = edit->cursorRect(cursor);
    cursor.setPosition(PythonWords::EndOf(*edit->document(), offset));
    return begin.united(edit->cursorRect(cursor));
}

void CodeExplanation::AskAt(int offset, const QPoint& onScreen)
{
    const QTextDocument& document = *edit->document();
    const bool isName = PythonWords::BeginOf(document, offset) < PythonWords::EndOf(document, offset);
    if (!isName || !questions->CanAnswer())
        return;
    const QString text = edit->toPlainText();
    questions->Ask(this, {CodeQuestion::Kind::Explain, text, offset},
                   [this, text, onScreen, offset, number = ++lastNumber](const QVariantMap& answer) {
                       const QString shown = TextOf(answer);
                       const bool isLate = number != lastNumber || text != edit->toPlainText();
                       if (!isLate && !shown.isEmpty() && !QToolTip::isVisible())
                           QToolTip::showText(onScreen, UIUtils::PlainToolTip(shown), edit->viewport(),
                                              NameRect(offset));
                   });
}

bool CodeExplanation::eventFilter(QObject*, QEvent* event)
{
    // Whoever else has something to show is asked as well.
    if (event->type() == QEvent::ToolTip)
        SlotHover(*static_cast<QHelpEvent*>(event));
    if (event->type() == QEvent::Leave)
        ++lastNumber;
    return false;
}
