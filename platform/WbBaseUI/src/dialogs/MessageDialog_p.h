// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <QMap>
#include <QMessageBox>

class QLabel;
class QVBoxLayout;

// The dialog behind PackagedMsgBox.
class MessageDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    enum class Kind
    {
        Information,
        Warning,
        Question,
    };
    using ButtonTexts = QMap<QMessageBox::StandardButton, QString>;

    MessageDialog(Kind kind, const QString& text, QWidget* parent, bool modal);

    void AddButtons(QMessageBox::StandardButtons buttons, const ButtonTexts& texts);
    // Borrowed until the dialog is destroyed; then it belongs to its former parent again, hidden.
    void SetExtraWidget(QWidget* extra);
    void SetTextSelectable(bool selectable);

    int GetAnswer() const { return answer; }

    void AdjustForDpi() override;

private:
    void AddButton(QMessageBox::StandardButton button, const QString& text, bool isDefault);

    const Kind kind;
    QLabel* labelIcon;
    QLabel* labelText;
    QVBoxLayout* textColumn;
    QWidget* buttonRow;
    int answer = QMessageBox::Cancel;
};
