// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentField_p.h"
#include "ProcessEdits_p.h"

#include <QPointer>
#include <QScrollArea>

class ProblemLabel;
class QLineEdit;
class QPlainTextEdit;

// The arguments, the output and the note of the selected statement. Every keystroke is written into the
// model; what is typed into one field in one go is one undo step.
class PropertyPanel : public QScrollArea
{
    Q_OBJECT

public:
    explicit PropertyPanel(QWidget* parent = nullptr);

    // No process: nothing can be edited.
    void SetProcess(ProcessEdits* processEdits, RpaProcess* shown);
    // Forgets the process without showing that.
    void LetGo();

    // One statement: its fields; none or several: a hint.
    void ShowStatements(const QStringList& ids);

    // Puts the keyboard into the first field that has a problem, else into the first field.
    void FocusFirst();

private:
    void Build();
    QWidget* BuildHint(const QString& text) const;
    QWidget* BuildHeader(const QString& command) const;
    QWidget* BuildOutput(const RpaCommandInfo& info);
    QWidget* BuildNote();
    FieldOffers Offers() const;
    void SlotStatementChanged(const RpaStatementNode* node);
    void Change(const QString& key, const std::function<void(RpaStatement&)>& change);
    void ChangeIn(RpaProcess& changed, const RpaStatementNode& node, const QString& key,
                  const std::function<void(RpaStatement&)>& change);
    const RpaStatementNode* Node() const;
    void CheckOutput();
    void EndTyping();
    void StartCapture(const QString& argument);
    void SlotCaptured(const QString& elementId);
    void SlotCapturingChanged(bool capturing);

    ProcessEdits* edits = nullptr;
    QPointer<RpaProcess> process;
    QStringList shownIds;
    QVector<ArgumentField*> fields;
    QLineEdit* outputEdit = nullptr;
    ProblemLabel* outputProblem = nullptr;
    bool outputRequired = false;
    QPlainTextEdit* noteEdit = nullptr;

    // What the element that is being captured is for.
    struct CaptureTarget
    {
        QPointer<RpaProcess> process;
        QString statement;
        QString argument;
    };
    CaptureTarget captureTarget;
    int captureNumber = 0; // the end of an earlier capture is dealt with late
};
