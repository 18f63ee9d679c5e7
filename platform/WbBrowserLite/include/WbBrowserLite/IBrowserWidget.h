// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QWidget>

class IBrowserEngine;
class IBrowserPointer;

// The embedded browser: address bar, back, forward, reload, fold and pop-out. Actions that are added to the
// widget (QWidget::addAction) appear in its tool bar.
class WBBROWSERLITE_EXPORT IBrowserWidget : public QWidget
{
    Q_OBJECT

public:
    explicit IBrowserWidget(QWidget* parent = nullptr);
    ~IBrowserWidget() override;

    // Builds the tool bar; called once after creation.
    virtual void InitToolBar() = 0;

    // Whether it stands beside an editor: then fold and pop-out are offered, and the author is told what to
    // do.
    virtual void SetEmbedded(bool embedded) = 0;

    // Goes back to the empty page and forgets history, cookies and marks of the app shown before.
    virtual void Reset() = 0;

    // Never null; lives as long as the widget.
    virtual IBrowserEngine* GetBrowserEngine() = 0;

    // Null where the browser offers none. Lives as long as the widget.
    virtual IBrowserPointer* GetPointer();

signals:
    // The user asked for the pane to be folded away, or to be popped out (true) and put back.
    void SigFold();
    void SigPopup(bool popup);
};
