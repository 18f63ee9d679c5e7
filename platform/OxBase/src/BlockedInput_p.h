// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <QWindow>

// Holds user input back while it lives. Input to a modal window that was opened in the meantime passes: its
// own event loop runs inside the wait, so the wait could not end before somebody answers it.
class BlockedInput : public QObject
{
    Q_OBJECT

public:
    BlockedInput();

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool LetsPass() const;

    QVector<QPointer<QWindow>> olderModals;
};
