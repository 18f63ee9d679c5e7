// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CodeQuestions_p.h"

#include <QObject>
#include <QVector>

class QPlainTextEdit;

// Gives the name at the cursor another one wherever it means the same: shows the places first, changes them in one
// step.
class CodeRename : public QObject
{
    Q_OBJECT

public:
    // The edit owns it.
    CodeRename(QPlainTextEdit* codeEdit, CodeQuestions* questions);

    void Begin();

private:
    void TakeAnswer(const QString& text, const QVariantMap& answer);
    void AskName(const QString& text, const QString& name, const QVector<int>& offsets);
    void Replace(const QVector<int>& offsets, int length, const QString& name);

    QPlainTextEdit* const edit;
    CodeQuestions* const questions;
};
