// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QObject>
#include <QString>

class QLineEdit;

// Keeps a line edit from cutting texts, as it does by itself beyond 32,767 characters: it takes longer ones,
// and a paste or drop that does not fit all the same (QLineEdit::maxLength()) is undone as a whole, with a
// notice. Belongs to its edit. GUI thread only.
class WBBASEUI_EXPORT WbLineLimit : public QObject
{
    Q_OBJECT

public:
    // A longer text would take seconds to be laid out in one line: it is shown cut, and is not to be edited.
    static constexpr int mostCharacters = 1000000;

    // what: as the user calls the text.
    WbLineLimit(QLineEdit* edit, const QString& what);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SlotRejected();
    void TakeBack();

    QLineEdit* const edit;
    const QString what;
    QString before; // the event that is being handled
    bool isTold = false;
};
