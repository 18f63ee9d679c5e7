// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QLabel>

// Plain-text label of the theme: text is never read as rich text.
class WBBASEUI_EXPORT WbLabel : public QLabel
{
    Q_OBJECT

public:
    // Empty, or with the text.
    explicit WbLabel(QWidget* parent = nullptr);
    explicit WbLabel(const QString& text, QWidget* parent = nullptr);
};
