// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QObject>
#include <QStringList>

class QWidget;

// Works at the workstation of its process as it is told over standard input, one line per act, with mouse and
// key events; answers each act on standard output once it was possible: "ok" and a text.
//
//     open NAME       opens the app of that name from the list
//     listed NAME     waits until the list of apps has it
//     click NAME      presses the visible widget of that name, in the modal window if there is one
//     answer TEXT     presses the button with that text in the modal window
//     type TEXT       types below the text of the instructions page
//     instructions    the text of that page, once a version is loaded
//     read NAME       the text of a visible label, button or drop-down
//     until NAME TEXT waits until that is its text
//     dismiss         closes the dialog that is open
//     sees TEXT       waits until a visible text contains it
//     fill NAME TEXT  types into that field instead of what stands there
//     gone NAME       waits until no such widget is visible
//     switch TEXT     picks the version of that name from the drop-down
//     picture FILE    saves what the screen shows
class Author : public QObject
{
    Q_OBJECT

public:
    explicit Author(QObject* parent = nullptr);

private:
    void SlotInput();
    void TryNext();
    bool Try(const QString& act, const QString& rest, QString* answer);
    bool Open(const QString& app);
    bool Type(const QString& text);
    bool Fill(const QString& name, const QString& text);
    bool Dismiss();
    bool Read(const QString& name, QString* text);
    bool Switch(const QString& version);

    QByteArray input;
    QStringList acts;
};
