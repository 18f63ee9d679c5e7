// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

// Tells the editor which of its pages the user picked, so that neither the navigation bar nor the editor
// needs to know the other. One object for the whole process; the signal is emitted and received on the GUI
// thread.
class RpaAppNotify : public QObject
{
    Q_OBJECT

public:
    explicit RpaAppNotify(QObject* parent = nullptr);
    ~RpaAppNotify() override;

    // The object, made on first use and after Release(). Any thread.
    static RpaAppNotify* Instance();

    // Destroys the object and with it all connections; does nothing when there is none. Runs by itself at
    // process exit.
    static void Release();

signals:
    // 0 UI design page, 1 process page, 2 usage-instructions page.
    void SigEditorTabChanged(int index);
};
