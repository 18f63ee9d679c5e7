// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QLineEdit>

// Line edit of the theme.
class WBBASEUI_EXPORT WbLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit WbLineEdit(QWidget* parent = nullptr);
};
