// SPDX-License-Identifier: Apache-2.0

#include "CodeSignatures_p.h"
#include "TextPlace_p.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>

namespace
{
constexpr int widestTip = 640;

QVariantMap SignatureIn(const QVariantMap& answer)
{
    const QVariantList all = answer.value(QStringLiteral("signatures")).toList();
    // Of several forms of a function the first that takes the current argument.
    for (const QVariant& each : all)
        if (each.toMap().value(QStringLiteral("current")).toInt() >= 0)
            return each.toMap();
    return all.value(0).toMap();
}

QString Escaped(const QVariant& text)
{
    return text.toString().toHtmlEscaped();
}
} // namespace

CodeSignatures::CodeSignatures(QPlainTextEdit* codeEdit, CodeQuestions* codeQuestions)
    : QObject(codeEdit), edit(codeEdit), questions(codeQuestions),
      tip(new QLabel(codeEdit, Qt::ToolTip | Qt::WindowDoesNotAcceptFocus))
{
    tip->setObjectName(QStringLiteral("signatureTip"));
    tip->setAttribute(Qt::WA_ShowWithoutActivating);
    tip->setTextFormat(Qt::RichText);
    tip->setWordWrap(true);
    tip->setMargin(6);
    tip->hide();
    connect(edit, &QPlainTextEdit::cursorPositionChanged, this, &CodeSignatures::SlotCursorMoved);
    connect(edit->verticalScrollBar(), &QScrollBar::valueChanged, tip, &QWidget::hide);
    connect(edit->horizontalScrollBar(), &QScrollBar::valueChanged, tip, &QWidget::hide);
    edit->installEventFilter(this);
}

void CodeSignatures::SlotCursorMoved()
{
    if (!typed && !tip->isVisible())
        return;
    typed = false;
    Ask();
}

void CodeSignatures::Ask()
{
    if (!questions->CanAnswer()) {
        tip->hide();
        return;
    }
    const QString text = edit->toPlainText();
    questions->Ask(
        this, {CodeQuestion::Kind::Signatures, text, edit->textCursor().position()},
        [this, text, number = ++lastNumber](const QVariantMap& answer) { TakeAnswer(number, text, answer); });
}

void CodeSignatures::TakeAnswer(int number, const QString& text, const QVariantMap& answer)
{
    if (number != lastNumber || !edit->hasFocus())
        return;
    if (text != edit->toPlainText()) {
        Ask(); // written on meanwhile
        return;
    }
    const QString shown = TextOf(answer);
    if (shown.isEmpty()) {
        tip->hide();
        return;
    }
    const QVariantMap signature = SignatureIn(answer);
    const TextPlace bracket{signature.value(QStringLiteral("line")).toInt(),
                            signature.value(QStringLiteral("column")).toInt()};
    tip->setText(shown);
    Place(bracket.In(text));
}

QString CodeSignatures::TextOf(const QVariantMap& answer)
{
    const QVariantMap signature = SignatureIn(answer);
    if (signature.isEmpty())
        return QString();
    const QVariantList parameters = signature.value(QStringLiteral("parameters")).toList();
    const int current = signature.value(QStringLiteral("current")).toInt();
    QStringList parts;
    for (int i = 0; i < parameters.size(); ++i)
        parts.append(i == current ? QStringLiteral("<b>%1</b>").arg(Escaped(parameters.at(i)))
                                  : Escaped(parameters.at(i)));
    QString text = Escaped(signature.value(QStringLiteral("name"))) + QLatin1Char('(') +
                   parts.join(QStringLiteral(", ")) + QLatin1Char(')');
    const QString what = Escaped(signature.value(QStringLiteral("text")));
    if (!what.isEmpty())
        text += QStringLiteral("<br>") + QString(what).replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    return text;
}

// Above the line, so that completions have their place below it.
void CodeSignatures::Place(int bracket)
{
    QTextCursor cursor(edit->document());
    cursor.setPosition(bracket);
    const QRect line = edit->cursorRect(cursor);
    const QPoint top = edit->viewport()->mapToGlobal(line.topLeft());
    const QScreen* screen = QGuiApplication::screenAt(top);
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const int width = qMin(tip->sizeHint().width(), qMin(widestTip, room.width()));
    tip->setFixedWidth(width);
    tip->setFixedHeight(qMax(tip->heightForWidth(width), 1));
    QPoint place = top - QPoint(0, tip->height() + 4);
    if (place.y() < room.top())
        place.setY(top.y() + line.height() + 4);
    place.setX(qBound(room.left(), place.x(), qMax(room.left(), room.right() - width)));
    tip->move(place);
    tip->show();
}

bool CodeSignatures::eventFilter(QObject*, QEvent* event)
{
    const bool isShown = tip->isVisible();
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool closes = isShown && key.key() == Qt::Key_Escape;
        if (closes && event->type() == QEvent::KeyPress)
            tip->hide();
        else if (closes)
            event->accept();
        if (event->type() == QEvent::KeyPress)
            typed = key.text() == QLatin1String("(") || key.text() == QLatin1String(",");
        return closes;
    }
    if (event->type() == QEvent::FocusOut || event->type() == QEvent::Hide)
        tip->hide();
    return false;
}
