#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

class QLabel;
class QToolButton;

// What fields offer to choose from.
struct FieldOffers
{
    QStringList variables;
    QStringList processes;
    QStringList parameters;
    QVector<RpaChoice> elements; // id and name
};

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

    // What is wrong with the text, in the author's words; empty when it may be used.
    static QString Problem(const RpaArgumentInfo& argument, const QString& text, const FieldOffers& offers);

signals:
    void SigEdited(const QString& text);
    void SigEditingFinished();
    // The author wants to point at the element instead of choosing it.
    void SigCaptureAsked();

private:
    bool MayBePython() const;
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
    bool IsPythonText() const;
    QString Shown() const;

    const RpaArgumentInfo info;
    const FieldOffers offers;
    QString text;
    bool python = false;
    QWidget* holder;
    QWidget* editor = nullptr;
    QToolButton* pythonButton = nullptr;
    QLabel* message;
};
