// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_AppPageHead.h"

#include <QWidget>

class QToolButton;

// The head of a list of apps: the tabs of the three lists, where others have a title, the search, the refresh button and what the list's
// page adds.
class AppPageHead : public QWidget
{
    Q_OBJECT

public:
    // The three lists of apps.
    enum Tab
    {
        Mine,
        Online,
        Gray,
    };

    // `shown` is the list of the page that it stands on.
    explicit AppPageHead(Tab shown, QWidget* parent = nullptr);

    // At the right end.
    void AddButton(QWidget* button);

    // What is looked for, without blanks around it.
    QString GetSearched() const { return ui.editSearch->text().trimmed(); }
    void SetSearched(const QString& text) { ui.editSearch->setText(text); }
    // Whether the keyboard is here only because nothing of the page was chosen for it: on a tab or in an
    // empty search.
    bool HasIdleFocus() const;
    void FocusSearch();

signals:
    void SigSearched();
    void SigRefresh();
    // The user wants to see another list of apps (Tab).
    void SigTab(int tab);

private:
    void ConnectTab(QToolButton* button, Tab tab, Tab shown);

    Ui::AppPageHead ui;
};
