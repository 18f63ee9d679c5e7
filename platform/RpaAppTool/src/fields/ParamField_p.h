// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaParamData.h>

#include <QWidget>

class QHBoxLayout;
class QLineEdit;
class ValueField;
class WbLabel;

// One field of the form, made for the type of its parameter.
class ParamField : public QWidget
{
    Q_OBJECT

public:
    explicit ParamField(const RpaParamItem& item, QWidget* parent = nullptr);

    // Shows the value of the parameter and, where a problem is shown, what there still is of it, without
    // emitting anything.
    void ShowItem(const RpaParamItem& item);

    // Says below the field what is wrong with its value; nothing when the text is empty.
    void ShowProblem(const QString& text);

    void TakeCursor();

signals:
    // The user entered something; invalid for an emptied field.
    void SigEntered(const QVariant& value);

private:
    void ShowValue(const QVariant& value);
    void SetMissing(bool missing);
    void AddTextField(const RpaParamItem& item);
    void AddNumberField(const RpaParamItem& item);
    void AddDateField(bool withTime);
    void AddChoiceField(const RpaParamItem& item);
    void AddSwitchField();
    void AddFileField(const RpaParamItem& item);
    void AddValueField(const RpaParamItem& item);
    void TakePath(const QString& path);
    static QString ShownText(QLineEdit& edit, const QString& text);

    QHBoxLayout* row;
    QWidget* field = nullptr;
    ValueField* valueField = nullptr; // around the field, where there is one
    WbLabel* problem = nullptr;       // none before there is one
};
