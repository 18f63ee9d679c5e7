// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QVector>

// Lets dialogs that know nothing of each other come one after another.
class DialogTurn : public QObject
{
public:
    // Opens the dialog at once, or when the modal windows that are shown have gone.
    static void Open(QDialog* dialog);
    // Holds the caller, who is about to execute the dialog, while one that was opened here is shown, unless
    // that is where the dialog came from. False when the dialog was destroyed meanwhile.
    static bool Await(QDialog* dialog);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static DialogTurn* Instance();
    void OpenNext();
    QDialog* Blocking(const QDialog* dialog) const;

    QVector<QPointer<QDialog>> waiting;
    QVector<QPointer<QDialog>> opened;
};
