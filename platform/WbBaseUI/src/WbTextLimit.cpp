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

bool AddsText(const QEvent* event)
{
    if (event->type() == QEvent::InputMethod)
        return !static_cast<const QInputMethodEvent*>(event)->commitString().isEmpty();
    if (event->type() != QEvent::KeyPress)
        return false;
    const QString text = static_cast<const QKeyEvent*>(event)->text();
    if (text.isEmpty())
        return false;
    const QChar first = text.at(0);
    return first.isPrint() || first.isSurrogate() || first == QLatin1Char('\r') || first == QLatin1Char('\t');
}

// A text that is certainly short costs nothing.
qint64 PlainBytes(const QPlainTextEdit& edit, int most)
{
    constexpr int mostBytesPerUnit = 3;
    const qint64 atMost = qint64(edit.document()->characterCount()) * mostBytesPerUnit;
    return atMost <= most - bytesPerKey ? atMost : ContentLimits::BytesOf(edit.toPlainText());
}
} // namespace

WbTextLimit::WbTextLimit(QPlainTextEdit* edit, const QString& name)
    : QObject(edit), plain(edit), what(name), sizeOf([this] { return PlainBytes(*plain, mostBytes); }),
      mostBytes(ContentLimits::textBytes)
{
    edit->installEventFilter(this);
    connect(edit->document(), &QTextDocument::contentsChanged, this, &WbTextLimit::Check);
}

WbTextLimit::WbTextLimit(QTextEdit* edit, const QString& name, const Size& size)
    : QObject(edit), rich(edit), what(name), sizeOf(size), mostBytes(ContentLimits::textBytes)
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

bool WbTextLimit::IsFull() const
{
    return sizeOf() > mostBytes - bytesPerKey;
}

void WbTextLimit::Tell() const
{
    WbToast::Show(
        QStringLiteral("%1不能超过 %2 MB，没有插入").arg(what).arg(qMax(1, mostBytes / (1024 * 1024))),
        ToastWarning);
}

bool WbTextLimit::Check()
{
    if (isUndoing || sizeOf() <= mostBytes || !Document()->isUndoAvailable())
        return true;
    isUndoing = true;
    Document()->undo();
    isUndoing = false;
    Tell();
    return false;
}

bool WbTextLimit::eventFilter(QObject* watched, QEvent* event)
{
    if (!AddsText(event) || HasSelection() || !IsFull())
        return QObject::eventFilter(watched, event);
    Tell();
    return true;
}
