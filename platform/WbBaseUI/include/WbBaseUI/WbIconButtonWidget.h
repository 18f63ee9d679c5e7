// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QWidget>

class QLabel;

// A tab-like button with a label; its look follows the selected flag, which the style sheet reads as the
// property "selected". Space and Return press it when it has the focus.
class WBBASEUI_EXPORT WbIconButtonWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool selected MEMBER bSelected)

public:
    // Without text, not selected.
    explicit WbIconButtonWidget(QWidget* parent = nullptr);

    // The label with the button's text.
    QLabel* GetLabelText() const { return labelText; }

    // Applies the look of the selected flag.
    void UpdateStyle();

    bool bSelected = false;

signals:
    // Pressed and released inside, or by a key.
    void SigClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLabel* labelText;
    bool pressed = false;
};
