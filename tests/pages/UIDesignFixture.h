// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaAppUIDesignWidget.h"

#include <QObject>

#include <memory>

class ModalDriver;
class RpaTabBar;
class RpaUIDataManager;

// Each test has a page of its own on the screen, with an app of three UI pages.
class UIDesignFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    static QString Text(const char* utf8) { return QString::fromUtf8(utf8); }
    static RpaAppDataPtr MakeApp(int pages);

    // In place of the one with an app.
    void ShowPageWithoutApp();
    RpaUIDataManager* Pages() const;
    QStringList Tabs() const;
    // Whole gestures on the bar.
    void PressTab(int index) const;
    void PressAdd() const;
    // The same, and the dialog that it opens is agreed to.
    void AddPage(const QString& name) const;
    // What the panel of tools shows in its first row; empty without one.
    QString ToolInPanel() const;

    std::unique_ptr<RpaAppUIDesignWidget> page;
    RpaTabBar* bar = nullptr;
    RpaAppDataPtr app;
};
