// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <WbBaseUI/WbBaseDialog.h>

class WbLabel;
class WbLineEdit;
class WbPushButton;

// Asks for the tags of an app. It stays open and shows why when they cannot be taken.
class AppTagsDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // known: tags that other apps have.
    AppTagsDialog(const AppRecord& app, const QStringList& known, QWidget* parent);
    ~AppTagsDialog() override;

    QStringList GetTags() const;

    // Shows why the tags were refused and lets the user go on.
    void ShowProblem(const QString& problem);

    // The tags that a line names, each once; between them blanks or commas.
    static QStringList Read(const QString& line);
    // Why these cannot be the tags of an app; empty when they can.
    static QString ProblemOf(const QStringList& tags);

signals:
    // Tags that can be were confirmed. The owner accepts the dialog or shows a problem.
    void SigConfirmed();

private:
    void SlotConfirm();
    void SetBusy(bool busy);

    WbLineEdit* editTags;
    WbLabel* labelProblem;
    WbPushButton* buttonOk;
};
