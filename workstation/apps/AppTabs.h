// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

// The three lists of apps; stands where the title of each list's page would.
class AppTabs : public QWidget
{
    Q_OBJECT

public:
    enum Tab
    {
        Mine,
        Online,
        Gray,
    };

    // `shown` is the list of the page that it stands on.
    explicit AppTabs(Tab shown, QWidget* parent = nullptr);

signals:
    // The user wants to see another list.
    void SigChosen(int tab);
};
