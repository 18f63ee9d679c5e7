// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/OxBaseExport.h>

#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>

// A wait inside the caller's stack: Block() runs a nested event loop until somebody calls Continue() or
// ContinueWith(). While it waits, mouse, key, shortcut, wheel, touch, drag and close input to the
// application's windows is held back, so that nothing the user does can start a second act in the middle of
// the first; timers, sockets and signals run on. Input passes to a modal window that opens during the wait (a
// message box of somebody else), for the wait cannot end before it closes. Waits may nest; an outer one
// returns after the inner ones.
class OXBASE_EXPORT OxBlocker : public QObject
{
    Q_OBJECT

public:
    // Tells whether anything that could end a wait is still outstanding.
    using OutstandingQuery = std::function<bool()>;

    // Waits for nothing yet.
    explicit OxBlocker(QObject* parent = nullptr);
    ~OxBlocker() override;

    // Waits. milliseconds 0 means no time limit; the wait then still ends without a value when the
    // application quits, or when the installed query says that nothing outstanding could end it. GUI thread
    // only. A Continue() that came before Block() is kept: Block() then returns at once.
    void Block(int milliseconds = 0);

    // The value ContinueWith() carried, or an invalid QVariant when anything else ended the wait.
    QVariant GetResult() const;

    // True while any blocker of the process waits; sources of input that do not pass through window events
    // (a shortcut served by a web page, say) ask it before they act.
    static bool IsBlocking();

    // Installed once by the request library; null removes it. Asked some 20 times a second while a blocker
    // waits without a time limit; the wait ends when the answer was "no" twice in a row.
    static void SetOutstandingQuery(OutstandingQuery query);

public slots:
    // Ends Block(), or the next one while none is under way; a value is what GetResult() gives afterwards.
    void Continue();
    void ContinueWith(const QVariant& value);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
