// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbLineLimit.h>
#include <WbBaseUI/WbToast.h>

#include <QEvent>
#include <QLineEdit>

#include <utility>

WbLineLimit::WbLineLimit(QLineEdit* line, const QString& name) : QObject(line), edit(line), what(name)
{
    line->setMaxLength(mostCharacters);
    line->installEventFilter(this);
    connect(line, &QLineEdit::inputRejected, this, &WbLineLimit::SlotRejected);
}

bool WbLineLimit::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::MouseButtonRelease:
    case QEvent::Drop:
        before = edit->text();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// Also when a validator does not like what was typed: then there was room.
void WbLineLimit::SlotRejected()
{
    if (edit->text().size() < edit->maxLength() || std::exchange(isTold, true))
        return;
    // The edit is still at it.
    QMetaObject::invokeMethod(this, &WbLineLimit::TakeBack, Qt::QueuedConnection);
}

void WbLineLimit::TakeBack()
{
    isTold = false;
    if (edit->text() != before && edit->isUndoAvailable())
        edit->undo();
    WbToast::Show(QStringLiteral("%1最多 %2 个字，没有插入").arg(what).arg(edit->maxLength()), ToastWarning);
}
