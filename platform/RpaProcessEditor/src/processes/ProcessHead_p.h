// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class ProcessTabs;
class QAction;
class QBoxLayout;
class QHBoxLayout;

// The row above the statements: the tabs of the processes and the tools. Where both do not fit side by side
// the tools get a row of their own.
class ProcessHead : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessHead(ProcessTabs* tabs, QWidget* parent = nullptr);

    // A button named as the action and "Button".
    void AddTool(QAction* action);
    // Sets the next tool apart from those before.
    void AddGap();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void Arrange();

    ProcessTabs* tabs;
    QBoxLayout* rows;
    QHBoxLayout* tools;
};
