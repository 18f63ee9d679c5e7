// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/IHttpRequest.h>
#include <OxHttp/IHttpResponse.h>

#include <QHash>
#include <QSharedPointer>
#include <QString>
#include <QVector>

// Whom an answer is for. Requests do not say who sent them, and an answer that reaches the editor of another
// app makes that one show, save or reload what is not its own. So each request takes along which editors
// there were when it was made, and an answer goes
// - never to an editor that came later: it sent nothing then;
// - of a request that names its app and whose answer an editor acts on unasked (list, deletion, release), or
//   that brings content, only to the editor of that app;
// - to a dialog that came later only while an editor that hears the answer is still there.
// - of a save, whose sender waits for it whatever it shows now, to every editor that ever belonged to the app whose
//   content is saved; when that is not known, to all.
// An editor is whoever hears lists; it belongs to the app whose list it asked for. Who asked is told by the
// order: the first list of an app belongs to the editor that was made first of those that asked for none yet.
class AppAudience
{
public:
    // What a request takes along.
    struct Ticket
    {
        QString appId;            // empty: of no app that is known
        QVector<quint64> editors; // that there were
        quint64 newest = 0;       // of all observers
        quint64 owner = 0;        // the editor of the app; 0: none
        QVector<quint64> savers;  // of a save: those that may have sent it; empty: any
    };

    // The list of the app is asked for.
    void Open(const QString& appId);
    Ticket Take(const QString& appId) const;
    // The editors that may hold content of the app; empty: not known.
    QVector<quint64> GetHolders(const QString& appId) const;

    // Hands the answer out to those whom it is for.
    void Notify(const Ticket& ticket, bool isSave, int notifyId, const QSharedPointer<IHttpRequest>& request,
                const QSharedPointer<IHttpResponse>& response);
    // An answer is being handed out: what is asked for now follows from it.
    bool IsNotifying() const { return isNotifying; }
    // The editor that asked is gone, or its dialog; so nobody tells the author how it went.
    static bool IsLeft(const Ticket& ticket, bool byDialog, int notifyId);

private:
    QString AppOf(quint64 editor) const { return appsByEditor.value(editor).value(0); }
    bool IsForEditor(const Ticket& ticket, bool isSave, quint64 editor) const;

    QHash<quint64, QStringList> appsByEditor; // the present one first
    QString lastOpened;
    bool isNotifying = false;
};
