// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CodeQuestions_p.h"

#include <QObject>

class QPlainTextEdit;

// Goes to where the name at the cursor is defined; of a name from elsewhere a notice says where that is.
class CodeDefinition : public QObject
{
    Q_OBJECT

public:
    // The edit owns it.
    CodeDefinition(QPlainTextEdit* codeEdit, CodeQuestions* questions);

    void Go();

private:
    void TakeAnswer(const QString& text, const QVariantMap& answer);

    QPlainTextEdit* const edit;
    CodeQuestions* const questions;
};
