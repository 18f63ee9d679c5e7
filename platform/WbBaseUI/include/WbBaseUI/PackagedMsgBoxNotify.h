// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QMessageBox>
#include <QObject>

// Hears what the user answered to the message boxes of PackagedMsgBox, whoever asked. GUI thread only.
class WBBASEUI_EXPORT PackagedMsgBoxNotify : public QObject
{
    Q_OBJECT

public:
    static PackagedMsgBoxNotify* Instance();

signals:
    // Before the answer reaches whoever asked. parent: the one given to the box, null when it is gone by now.
    // answer: one of the buttons, or QMessageBox::Cancel for a box that was closed.
    void SigAnswered(QWidget* parent, QMessageBox::StandardButtons buttons, int answer);

private:
    PackagedMsgBoxNotify() = default;
};
