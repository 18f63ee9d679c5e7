// SPDX-License-Identifier: Apache-2.0

#include "KeyFilter.h"

#include "KeyActs.h"

#include <OxBase/OxBlocker.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QToolButton>

namespace
{
bool IsTextBeingWritten(const QWidget& widget)
{
    return widget.testAttribute(Qt::WA_InputMethodEnabled);
}

// A field takes back what was typed into it itself; what it has no more of belongs to the app.
bool HasOwnStep(const QWidget& widget, KeyAct act)
{
    const bool undo = act == KeyAct::Undo;
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
        return undo ? line->isUndoAvailable() : line->isRedoAvailable();
    const QTextDocument* text = nullptr;
    if (const auto* edit = qobject_cast<const QTextEdit*>(&widget))
        text = edit->document();
    else if (const auto* plain = qobject_cast<const QPlainTextEdit*>(&widget))
        text = plain->document();
    if (text)
        return undo ? text->isUndoAvailable() : text->isRedoAvailable();
    // A web page's field, which is not seen from here.
    return IsTextBeingWritten(widget) && !qobject_cast<const QAbstractItemView*>(&widget);
}

bool IsEnter(const QKeyEvent& event)
{
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
           (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

QKeySequence KeyOf(const QKeyEvent& event)
{
    // A question mark is typed with Shift on one keyboard and without on another.
    if (event.key() == Qt::Key_Question)
        return Qt::Key_Question;
    return event.key() | static_cast<int>(event.modifiers() & ~Qt::KeypadModifier);
}
} // namespace

KeyFilter::KeyFilter(QWidget* owner, const KeyActs* keyActs) : QObject(owner), window(owner), acts(keyActs)
{
    qApp->installEventFilter(this);
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    const bool asked = event->type() == QEvent::ShortcutOverride;
    if ((!asked && event->type() != QEvent::KeyPress) || !watched->isWidgetType())
        return false;
    auto& widget = *static_cast<QWidget*>(watched);
    auto& key = *static_cast<QKeyEvent*>(event);
    if (!IsOurs(widget))
        return false;
    const bool taken = asked ? RowOf(key, widget) != nullptr : TakePress(key, widget);
    if (taken)
        event->accept();
    return taken;
}

bool KeyFilter::IsOurs(const QWidget& widget) const
{
    if (!window->isEnabled() || OxBlocker::IsBlocking() || QApplication::activeModalWidget() ||
        QApplication::activePopupWidget())
        return false;
    const QWidget* const top = widget.window();
    return top == window || qobject_cast<const IBrowserBorderWindow*>(top);
}

const KeyRow* KeyFilter::RowOf(const QKeyEvent& event, const QWidget& widget) const
{
    const KeyRow* const row = KeyTable::Find(KeyOf(event), acts->GetPlace());
    if (!row)
        return nullptr;
    const bool isText = event.key() == Qt::Key_Question;
    const bool isStep = row->act == KeyAct::Undo || row->act == KeyAct::Redo;
    return (isText && IsTextBeingWritten(widget)) || (isStep && HasOwnStep(widget, row->act)) ? nullptr : row;
}

bool KeyFilter::TakePress(const QKeyEvent& event, QWidget& widget)
{
    if (const KeyRow* const row = RowOf(event, widget)) {
        const bool repeats = row->act == KeyAct::Undo || row->act == KeyAct::Redo;
        if (repeats || !event.isAutoRepeat())
            acts->Do(row->act);
        return true;
    }
    auto* const button = qobject_cast<QAbstractButton*>(&widget);
    const bool pressed = qobject_cast<QPushButton*>(button) || qobject_cast<QToolButton*>(button);
    if (!pressed || !IsEnter(event) || event.isAutoRepeat())
        return false;
    button->click();
    return true;
}
