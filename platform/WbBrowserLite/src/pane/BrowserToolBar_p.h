// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QUrl>
#include <QWidget>

class QAction;
class QHBoxLayout;
class QProgressBar;
class QToolButton;
class WbLineEdit;

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
    QToolButton* AddButton(const char* name, const QString& icon, const QString& text);
    static void Dress(QToolButton* button, const QString& icon, const QString& text);
    void ShowEmbedding();

    QHBoxLayout* row;
    QToolButton* back;
    QToolButton* forward;
    QToolButton* reload;
    WbLineEdit* address;
    QHBoxLayout* tools;
    QToolButton* popup;
    QToolButton* fold;
    QProgressBar* progress;
    bool loading = false;
    bool embedded = false;
    bool poppedOut = false;
};
