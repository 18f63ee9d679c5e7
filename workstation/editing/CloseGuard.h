// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTimer>

class SaveLedger;

// The road from "close the window" to its end: everybody who has a say is asked, and saves that are still on
// their way are waited for, because an editor may say yes while one of them is not answered yet.
class CloseGuard : public QObject
{
    Q_OBJECT

public:
    explicit CloseGuard(SaveLedger* ledger, QObject* parent = nullptr);

    // A request while one is under way, or after the window may close, changes nothing.
    void RequestClose();

signals:
    // Everybody agreed and a save is still on its way.
    void SigWaiting();
    // Once: the window may close.
    void SigMayClose();

private:
    void Finish();

    enum class State
    {
        Open,
        Asking,
        Waiting,
        Closing,
    };

    SaveLedger* const ledger;
    QTimer patience;
    State state = State::Open;
};
