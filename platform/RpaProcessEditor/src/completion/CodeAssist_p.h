// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QObject>

class QAction;
class QPlainTextEdit;
class QWidget;

// What a program editor knows of its text: completions, arguments, explanations, definitions, other names.
class CodeAssist : public QObject
{
    Q_OBJECT

public:
    // The edit owns it. Its keys become actions of the page.
    CodeAssist(QPlainTextEdit* edit, QWidget* page);

    // Those that are about the name at the cursor, for a menu.
    QList<QAction*> GetNameActions() const { return nameActions; }

private:
    QList<QAction*> nameActions;
};
