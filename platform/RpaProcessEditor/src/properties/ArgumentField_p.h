// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentText_p.h"

#include <QWidget>

class ProblemLabel;
class QLabel;
class QLineEdit;
class QShortcut;
class QToolButton;
class ValuePicker;
class WbFocusForward;

// The editor of one argument: label, field after the argument's type, message below it when the text is not
// usable. Where Python is not needed it stands behind the switch "fx", which changes the view and never the
// text; Python that cannot be shown otherwise stays there and says why. Typing "=" first switches too.
class ArgumentField : public QWidget
{
    Q_OBJECT

public:
    ArgumentField(const RpaArgumentInfo& argument, const FieldOffers& fieldOffers, QWidget* parent = nullptr);

    QString Name() const { return info.name; }
    QString Text() const { return text; }

    // Shows a text that came from elsewhere; emits nothing.
    void SetText(const QString& shown);

signals:
    void SigEdited(const QString& text);
    void SigEditingFinished();
    // The author wants to point at the element instead of choosing it.
    void SigCaptureAsked();

private:
    enum class View
    {
        Own,    // the field of the argument's type
        Pieces, // a text with variables
        Form,   // rows or a grid
        Python,
    };

    QWidget* BuildTop();
    QToolButton* BuildPythonButton();
    View BestView() const;
    void SetView(View shown);
    void SlotPythonClicked(bool checked);
    void Pick(const RpaValuePart& part);
    void PickIntoText(const RpaValuePart& part);
    void BuildEditor();
    QWidget* MakeEditor();
    QWidget* BuildForm();
    QWidget* BuildPieces();
    QWidget* BuildLine(const QStringList& completions, bool code);
    QWidget* BuildMultiline();
    QWidget* BuildCombo(const QVector<RpaChoice>& choices, bool editable);
    QWidget* BuildPath();
    QWidget* BuildCaptureButton();
    QVector<RpaChoice> Choices() const;
    void Take(const QString& shown);
    void TakeStored(const QString& stored);
    void ShowText();
    void OrderTabs();
    QLineEdit* Line() const;
    void ShowProblem();
    void MarkProblem(bool problem);

    const RpaArgumentInfo info;
    const FieldOffers offers;
    QString text;
    View view = View::Own;
    QWidget* holder;
    QWidget* editor = nullptr;
    QToolButton* pythonButton = nullptr;
    QToolButton* pickButton = nullptr;
    ValuePicker* picker = nullptr;
    QShortcut* pickKey = nullptr;
    QLabel* hint;
    ProblemLabel* message;
    WbFocusForward* focus;
};
