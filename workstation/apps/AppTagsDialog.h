// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "FieldDialog.h"

// Asks for the tags of an app.
class AppTagsDialog : public FieldDialog
{
    Q_OBJECT

public:
    // known: tags that other apps have.
    AppTagsDialog(const AppRecord& app, const QStringList& known, QWidget* parent);

    QStringList GetTags() const { return Read(GetText()); }

    // The tags that a line names, each once; between them blanks or commas.
    static QStringList Read(const QString& line);
    // Why these cannot be the tags of an app; empty when they can.
    static QString ProblemOf(const QStringList& tags);

protected:
    QString FindProblem() const override { return ProblemOf(GetTags()); }
};
