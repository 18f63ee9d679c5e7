// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class QPlainTextEdit;
class QWidget;

// What a program editor knows of its text: completions, arguments, explanations, definitions, other names.
class CodeAssist : public QObject
{
    Q_OBJECT

public:
    // The edit owns it. Its keys become actions of the page.
    CodeAssist(QPlainTextEdit* edit, QWidget* page);
};
