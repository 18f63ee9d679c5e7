// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppTabs.h"

#include <QWidget>

class QHBoxLayout;
class WbLineEdit;

// The head of a list of apps: the tabs of the three lists, the search, the refresh button and what the list's
// page adds.
class AppPageHead : public QWidget
{
    Q_OBJECT

public:
    explicit AppPageHead(AppTabs::Tab shown, QWidget* parent = nullptr);

    // At the right end.
    void AddButton(QWidget* button);

    // What is looked for, without blanks around it.
    QString GetSearched() const;
    void SetSearched(const QString& text);
    // Whether the keyboard is here only because nothing of the page was chosen for it: on a tab or in an
    // empty search.
    bool HasIdleFocus() const;
    void FocusSearch();

signals:
    void SigSearched();
    void SigRefresh();
    // Another list of apps (AppTabs::Tab).
    void SigTab(int tab);

private:
    AppTabs* const tabs; // first to get the focus
    WbLineEdit* const editSearch;
    QHBoxLayout* const row;
};
