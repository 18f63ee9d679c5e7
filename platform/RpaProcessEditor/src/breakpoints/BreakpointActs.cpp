// SPDX-License-Identifier: Apache-2.0

#include "BreakpointActs_p.h"
#include "BreakpointDialog_p.h"

#include <QMenu>
#include <QTimer>

QString BreakpointActs::PlaceText(const RpaDebugPlace& place)
{
    return QStringLiteral("%1 第 %2 行").arg(place.processName).arg(place.line);
}

void BreakpointActs::Edit(const QSharedPointer<AppBreakpoints>& list, const RpaDebugPlace& place,
                          QWidget* parent)
{
    RpaBreakpoint breakpoint;
    if (const RpaBreakpoint* found = list->Find(place))
        breakpoint = *found;
    breakpoint.place = place;
    // The editor may go away while the author thinks.
    const QPointer<BreakpointDialog> dialog = new BreakpointDialog(breakpoint, PlaceText(place), parent);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    if (accepted && dialog->IsToBeRemoved())
        list->Remove(place);
    else if (accepted)
        list->Put(dialog->Breakpoint());
    delete dialog;
}

void BreakpointActs::ShowMenu(const QSharedPointer<AppBreakpoints>& list, const RpaDebugPlace& place,
                              QWidget* parent, const QPoint& position)
{
    const RpaBreakpoint* found = list->Find(place);
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("breakpointMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(found ? QStringLiteral("删除断点") : QStringLiteral("添加断点"),
                    [list, place] { list->Toggle(place); });
    if (found)
        menu->addAction(found->enabled ? QStringLiteral("停用断点") : QStringLiteral("启用断点"),
                        [list, place, enable = !found->enabled] { list->SetEnabled(place, enable); });
    menu->addAction(QStringLiteral("断点条件…"), parent, [list, place, parent] {
        // When the menu is gone: it must not be while it tells of its action.
        QTimer::singleShot(0, parent, [list, place, parent] { Edit(list, place, parent); });
    });
    menu->popup(position);
}
