// SPDX-License-Identifier: Apache-2.0

#include "ActEntries.h"

#include "KeyActs.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QSet>
#include <QWidget>

namespace
{
// Where the action takes effect, when that is on the page and not in a menu alone.
QWidget* PlaceOf(const QAction& action, bool visibleOnly)
{
    const QWidgetList places = action.associatedWidgets();
    for (QWidget* place : places)
        if (!qobject_cast<QMenu*>(place) && (!visibleOnly || place->isVisible()))
            return place;
    return nullptr;
}

QString PlainText(const QAction& action)
{
    QString text = action.text();
    return text.remove(QLatin1Char('&'));
}

QString ReasonOf(const QAction& action)
{
    if (action.isEnabled())
        return QString();
    const QString own = action.property("whyNot").toString();
    return own.isEmpty() ? QStringLiteral("现在不可用") : own;
}

QVector<ActEntry> OfTable(const KeyActs& acts)
{
    QVector<ActEntry> entries;
    for (const KeyRow& row : KeyTable::Rows()) {
        const QString key = row.keys.isEmpty() ? QString() : KeyTable::KeyText(row.keys.first());
        const KeyActs* const doer = &acts;
        entries.append(
            {row.group, row.text, key, acts.WhyNot(row.act), [doer, act = row.act] { doer->Do(act); }});
    }
    return entries;
}

ActEntry OfAction(QAction& action)
{
    const QPointer<QAction> chosen(&action);
    return {QStringLiteral("这一页"), PlainText(action), KeyTable::KeyText(action.shortcut()),
            ReasonOf(action), [chosen] {
                if (chosen)
                    chosen->trigger();
            }};
}
} // namespace

QVector<ActEntry> ActEntries::Of(const KeyActs& acts, const QWidget& page, bool visibleOnly)
{
    QVector<ActEntry> entries = OfTable(acts);
    QSet<QString> listed;
    for (const ActEntry& entry : qAsConst(entries))
        listed.insert(entry.text);
    const auto actions = page.findChildren<QAction*>();
    for (QAction* action : actions) {
        const QString text = PlainText(*action);
        const bool wanted = !text.isEmpty() && !action->isSeparator() && !action->menu();
        if (wanted && PlaceOf(*action, visibleOnly) && !listed.contains(text)) {
            listed.insert(text);
            entries.append(OfAction(*action));
        }
    }
    return entries;
}
