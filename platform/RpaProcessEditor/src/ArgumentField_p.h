#pragma once

#include "ArgumentText_p.h"

#include <QWidget>

class ProblemLabel;
class QToolButton;
class WbFocusForward;

// The editor of one argument: label, field after the argument's type, message below it when the text is not
// usable. Arguments that may be literal or Python have a switch between the two; typing "=" first switches
// too.
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
    void SetPython(bool python);
    void BuildEditor();
    QWidget* BuildLine(const QStringList& completions, bool code);
    QWidget* BuildMultiline();
    QWidget* BuildCombo(const QVector<RpaChoice>& choices, bool editable);
    QWidget* BuildPath();
    QWidget* BuildCaptureButton();
    QVector<RpaChoice> Choices() const;
    void Take(const QString& shown);
    void ShowText();
    void ShowProblem();

    const RpaArgumentInfo info;
    const FieldOffers offers;
    QString text;
    bool python = false;
    QWidget* holder;
    QWidget* editor = nullptr;
    QToolButton* pythonButton = nullptr;
    ProblemLabel* message;
    WbFocusForward* focus;
};
