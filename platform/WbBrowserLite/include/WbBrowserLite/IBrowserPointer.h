// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantMap>

// Lets the user point at an element of the page that is shown. The page takes no part in it: it gets no mouse
// event and its document is not touched. GUI thread.
class WBBROWSERLITE_EXPORT IBrowserPointer : public QObject
{
    Q_OBJECT

public:
    explicit IBrowserPointer(QObject* parent = nullptr);
    ~IBrowserPointer() override;

    // Begins; false when no page is shown. Goes on when the page changes.
    // describe: JavaScript, a function (x, y, picked) of a point of the viewport in CSS pixels; picked is
    // false while the mouse only moves over the page. Runs in a world of the editor's own; returns null for
    // nothing, or an object with "rect" ([x, y, width, height] in CSS pixels) and "label", which are marked;
    // the rest is for the caller. What comes back was made from a foreign page: check it. hint: what to do,
    // shown over the page.
    virtual bool Start(const QString& describe, const QString& hint) = 0;
    virtual void Stop() = 0;
    virtual bool IsActive() const = 0;

signals:
    // The user pressed the mouse on something. Pointing goes on until Stop().
    void SigPicked(const QVariantMap& description, const QUrl& page);
    // Once per successful Start(): after Stop(), Escape, or when the browser was hidden, reset or destroyed.
    void SigStopped();
};
