// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_BrowserToolBar.h"

#include <QUrl>
#include <QWidget>

class QAction;

// Back, forward, reload, address, the actions that others add, pop-out and fold.
class BrowserToolBar : public QWidget
{
    Q_OBJECT

public:
    explicit BrowserToolBar(QWidget* parent = nullptr);

    void AddTool(QAction* action);
    void RemoveTool(const QAction* action);

    void SetEmbedded(bool embedded);
    void SetPoppedOut(bool out);

    void ShowAddress(const QUrl& url);
    void ShowHistory(bool canGoBack, bool canGoForward);
    // percent of a page that loads; 100 when none does.
    void ShowProgress(int percent);
    void FocusAddress();

signals:
    void SigAddressEntered(const QString& text);
    void SigBack();
    void SigForward();
    void SigReload();
    void SigStop();
    void SigPopup(bool popup);
    void SigFold();

private:
    static void Dress(QToolButton* button, const QString& icon, const QString& text);
    void ShowEmbedding();

    Ui::BrowserToolBar ui;
    bool loading = false;
    bool embedded = false;
    bool poppedOut = false;
};
