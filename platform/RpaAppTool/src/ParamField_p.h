#pragma once

#include <RpaAppData/RpaParamData.h>

#include <QWidget>

class QHBoxLayout;
class QLineEdit;

// One field of the form, made for the type of its parameter.
class ParamField : public QWidget
{
    Q_OBJECT

public:
    explicit ParamField(const RpaParamItem& item, QWidget* parent = nullptr);

    // Shows a value without emitting anything.
    void ShowValue(const QVariant& value);

    // An empty required field is marked.
    void SetMissing(bool missing);

signals:
    // The user entered something; invalid for an emptied field.
    void SigEntered(const QVariant& value);

private:
    void AddTextField(const RpaParamItem& item);
    void AddNumberField(const RpaParamItem& item);
    void AddDateField();
    void AddChoiceField(const RpaParamItem& item);
    void AddSwitchField();
    void AddFileField(const RpaParamItem& item);
    void ChooseFile();
    static QString ShownText(QLineEdit& edit, const QString& text);

    QHBoxLayout* row;
    QWidget* field = nullptr;
};
