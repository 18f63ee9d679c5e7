// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RunBar.h"

#include <QWidget>

// The row of a page of processes with which its runs are controlled and watched.
class RunBar : public QWidget
{
    Q_OBJECT

public:
    // The buttons are for those actions of the page that are named like them.
    explicit RunBar(const QWidget* page, QWidget* parent = nullptr);
    ~RunBar() override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void ShowSettings();

    Ui::RunBar ui;
};
