// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbBaseUIExport.h>

#include <QPushButton>

// Push button whose look follows its type (Wb::ButtonType) and business family, both readable by the style
// sheet as the properties "buttonType" and "business".
class WBBASEUI_EXPORT WbPushButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(int buttonType READ GetButtonType WRITE SetButtonType)
    Q_PROPERTY(int business READ GetBusinessValue)

public:
    // The type is one of Wb::ButtonType.
    explicit WbPushButton(QWidget* parent = nullptr, int buttonType = 0,
                          Wb::BaseUIBusiness business = Wb::BaseUIBusiness::General);

    // What was set last.
    int GetButtonType() const { return buttonType; }

    // Sets the type and applies the look of type and business family.
    void SetButtonType(int type);

    // The business family as a number, for the style sheet.
    int GetBusinessValue() const;

    // Takes effect with the next SetButtonType().
    void SetBusiness(Wb::BaseUIBusiness family) { business = family; }

private:
    int buttonType;
    Wb::BaseUIBusiness business;
};
