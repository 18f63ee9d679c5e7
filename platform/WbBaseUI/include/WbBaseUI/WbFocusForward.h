// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QObject>
#include <QPointer>
#include <QWidget>

// Hands the focus that a compound widget is given on to one of its parts. Unlike a focus proxy it leaves the
// way of the Tab key through the parts as it is, where a proxy has it begin with the one part and skip those
// before it.
class WBBASEUI_EXPORT WbFocusForward : public QObject
{
    Q_OBJECT

public:
    // The compound widget owns it.
    WbFocusForward(QWidget* compound, QWidget* part);

    // Another part from now on; null for none.
    void SetPart(QWidget* part) { target = part; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> target;
};
