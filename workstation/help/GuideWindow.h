// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_GuideWindow.h"

#include <WbBaseUI/WbBaseWidget.h>

// The guide in a window of its own beside the work: contents, pictures, search.
class GuideWindow : public WbBaseWidget
{
    Q_OBJECT

public:
    // Belongs to `window`, and goes with it.
    explicit GuideWindow(QWidget* window);

    // page: file of the guide. heading: of that page; empty for its beginning.
    void Open(const QString& page, const QString& heading);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void FillContents();
    void ShowChosen();
    void MarkPage();
    void FindNext();
    bool FindOn(int page, bool fromTop);

    Ui::GuideWindow ui;
};
