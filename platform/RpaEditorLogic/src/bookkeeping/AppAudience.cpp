// SPDX-License-Identifier: Apache-2.0

#include "AppAudience_p.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace
{
// Oldest first.
QVector<quint64> Editors()
{
    return HttpNotifyManager::Instance()->GetParties(NotifyGetSnapshotList);
}
} // namespace

void AppAudience::Open(const QString& appId)
{
    const QVector<quint64> editors = Editors();
    QHash<quint64, QStringList> alive;
    for (const quint64 editor : editors)
        alive.insert(editor, appsByEditor.value(editor));
    appsByEditor = alive;
    const QString before = std::exchange(lastOpened, appId);
    const auto first = [&](const QString& app) {
        return std::find_if(editors.cbegin(), editors.cend(),
                            [&](quint64 editor) { return AppOf(editor) == app; });
    };
    if (editors.isEmpty() || first(appId) != editors.cend())
        return;
    // One that asked for no list yet; else the one that asked last turns to another app.
    auto asking = first(QString());
    if (asking == editors.cend())
        asking = first(before);
    appsByEditor[asking == editors.cend() ? editors.last() : *asking].prepend(appId);
}

AppAudience::Ticket AppAudience::Take(const QString& appId) const
{
    Ticket ticket;
    ticket.appId = appId;
    ticket.editors = Editors();
    ticket.newest = HttpNotifyManager::Instance()->GetLastSerial();
    const auto owner = std::find_if(ticket.editors.cbegin(), ticket.editors.cend(), [&](quint64 editor) {
        return !appId.isEmpty() && AppOf(editor) == appId;
    });
    ticket.owner = owner == ticket.editors.cend() ? 0 : *owner;
    return ticket;
}

QVector<quint64> AppAudience::GetHolders(const QString& appId) const
{
    QVector<quint64> holders;
    if (appId.isEmpty())
        return holders;
    const QVector<quint64> editors = Editors();
    std::copy_if(editors.cbegin(), editors.cend(), std::back_inserter(holders), [&](quint64 editor) {
        const QStringList apps = appsByEditor.value(editor);
        return apps.isEmpty() || apps.contains(appId);
    });
    return holders;
}

bool AppAudience::IsForEditor(const Ticket& ticket, bool isSave, quint64 editor) const
{
    if (!ticket.editors.contains(editor))
        return false;
    if (isSave)
        return ticket.savers.isEmpty() || ticket.savers.contains(editor);
    if (ticket.appId.isEmpty())
        return true;
    const QString app = AppOf(editor);
    return app.isEmpty() ? ticket.owner == 0 : app == ticket.appId;
}

void AppAudience::Notify(const Ticket& ticket, bool isSave, int notifyId,
                         const QSharedPointer<IHttpRequest>& request,
                         const QSharedPointer<IHttpResponse>& response)
{
    const auto isFor = [&](quint64 party) {
        const QVector<quint64> editors = Editors();
        if (editors.contains(party))
            return IsForEditor(ticket, isSave, party);
        const bool hasEditor = std::any_of(editors.cbegin(), editors.cend(), [&](quint64 editor) {
            return IsForEditor(ticket, isSave, editor);
        });
        return party <= ticket.newest || hasEditor || ticket.editors.isEmpty();
    };
    const QScopedValueRollback<bool> guard(isNotifying, true);
    HttpNotifyManager::Instance()->Notify(notifyId, request, response, isFor);
}

bool AppAudience::IsLeft(const Ticket& ticket, bool byDialog, int notifyId)
{
    if (ticket.owner == 0)
        return false;
    if (!Editors().contains(ticket.owner))
        return true;
    // A dialog is made by its editor and before it asks.
    const QVector<quint64> parties = HttpNotifyManager::Instance()->GetParties(notifyId);
    return byDialog && std::none_of(parties.cbegin(), parties.cend(), [&](quint64 party) {
               return party > ticket.owner && party <= ticket.newest;
           });
}
