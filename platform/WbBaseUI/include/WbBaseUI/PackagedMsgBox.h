// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QMap>
#include <QMessageBox>
#include <QString>

// Modal message boxes of the theme. Each returns the standard button that was pressed; closing a box counts
// as QMessageBox::Cancel. GUI thread only.
class WBBASEUI_EXPORT PackagedMsgBox
{
public:
    // text: plain text. parent: the box is centred over it. buttons: standard buttons. modal:
    // application-modal. extra: a widget shown below the text, not owned, may be null. buttonTexts: other
    // texts for buttons. textControlType: 0 wraps the text, 1 also lets the user select it.
    static int information(const QString& text, QWidget* parent, QMessageBox::StandardButtons buttons,
                           bool modal = true, QWidget* extra = nullptr,
                           const QMap<QMessageBox::StandardButton, QString>& buttonTexts = {},
                           int textControlType = 0);
    static int warn(const QString& text, QWidget* parent, QMessageBox::StandardButtons buttons,
                    bool modal = true, QWidget* extra = nullptr,
                    const QMap<QMessageBox::StandardButton, QString>& buttonTexts = {},
                    int textControlType = 0);
    static int question(const QString& text, QWidget* parent, QMessageBox::StandardButtons buttons,
                        bool modal = true, QWidget* extra = nullptr,
                        const QMap<QMessageBox::StandardButton, QString>& buttonTexts = {},
                        int textControlType = 0);
};
