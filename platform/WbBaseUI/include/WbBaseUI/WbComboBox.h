// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QComboBox>

// Combo box of the theme. Its popup opens below the box, as wide as the box or its rows, and does not slow
// down with the number of rows.
class WBBASEUI_EXPORT WbComboBox : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(int businessStyle READ GetBusinessStyle)

public:
    // Empty, of the general style.
    explicit WbComboBox(QWidget* parent = nullptr);

    // 0 general, 1 form field.
    int GetBusinessStyle() const { return businessStyle; }
    void SetBusinessStyle(int style);

    // May be called while a mouse button is down on the box or on its line edit: the release leaves the popup
    // open.
    void showPopup() override;

private:
    int businessStyle = 0;
};
