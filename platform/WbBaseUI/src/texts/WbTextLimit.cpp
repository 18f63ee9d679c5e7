// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbToast.h>
#include <WbFoundation/ContentLimits.h>

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

namespace
{
// What one key may add, indentation and marks around it included. Undoing it would take away all that was
// typed since the last pause.
constexpr int bytesPerKey = 512;
constexpr qint64 mostBytesPerUnit = 3;

bool AddsText(const QEvent* event)
{
    if (event->type() == QEvent::InputMethod)
        return !static_cast<const QInputMethodEvent*>(event)->commitString().isEmpty();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* const key = static_cast<const QKeyEvent*>(event);
    const QString text = key->text();
    // Control alone is a command; with Alt it may be AltGr, which types.
    const bool isCommand =
        (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::ControlModifier;
    if (text.isEmpty() || isCommand)
        return false;
    const QChar first = text.at(0);
    return first.isPrint() || first.isSurrogate() || first == QLatin1Char('\r') || first == QLatin1Char('\t');
}

} // namespace

WbTextLimit::WbTextLimit(QPlainTextEdit* edit, const QString& name)
    : QObject(edit), plain(edit), what(name), mostBytes(ContentLimits::textBytes)
{
    edit->installEventFilter(this);
    connect(edit->document(), &QTextDocument::contentsChanged, this, &WbTextLimit::CheckPlain);
}

WbTextLimit::WbTextLimit(QTextEdit* edit, const QString& name)
    : QObject(edit), rich(edit), what(name), mostBytes(ContentLimits::textBytes)
{
    edit->installEventFilter(this);
}

QTextDocument* WbTextLimit::Document() const
{
    return plain ? plain->document() : rich->document();
}

bool WbTextLimit::HasSelection() const
{
    return (plain ? plain->textCursor() : rich->textCursor()).hasSelection();
}

// A text that is certainly short is not counted.
qint64 WbTextLimit::BytesOf(const QString& text) const
{
    const qint64 atMost = text.size() * mostBytesPerUnit;
    return atMost <= mostBytes - bytesPerKey ? atMost : ContentLimits::BytesOf(text);
}

void WbTextLimit::CheckPlain()
{
    if (isUndoing)
        return;
    const qint64 atMost = plain->document()->characterCount() * mostBytesPerUnit;
    const qint64 before = size;
    size = atMost <= mostBytes - bytesPerKey ? atMost : ContentLimits::BytesOf(plain->toPlainText());
    if (size <= mostBytes || !Document()->isUndoAvailable())
        return;
    TakeBack();
    size = before;
}

bool WbTextLimit::Check(const QString& kept)
{
    if (isUndoing)
        return true;
    const qint64 before = size;
    size = BytesOf(kept);
    if (size <= mostBytes || !Document()->isUndoAvailable())
        return true;
    TakeBack();
    size = before;
    return false;
}

void WbTextLimit::TakeBack()
{
    isUndoing = true;
    Document()->undo();
    isUndoing = false;
    Tell();
}

void WbTextLimit::Tell() const
{
    WbToast::Show(
        QStringLiteral("%1不能超过 %2 MB，没有插入").arg(what).arg(qMax(1, mostBytes / (1024 * 1024))),
        ToastWarning);
}

bool WbTextLimit::eventFilter(QObject* watched, QEvent* event)
{
    if (!AddsText(event) || HasSelection() || size <= mostBytes - bytesPerKey)
        return QObject::eventFilter(watched, event);
    Tell();
    return true;
}
