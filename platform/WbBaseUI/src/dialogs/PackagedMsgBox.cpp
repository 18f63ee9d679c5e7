// SPDX-License-Identifier: Apache-2.0

#include "MessageDialog_p.h"

#include <WbBaseUI/PackagedMsgBox.h>

#include <QPointer>

namespace
{
struct Request
{
    const QString& text;
    QWidget* parent;
    QMessageBox::StandardButtons buttons;
    bool modal;
    QWidget* extra;
    const QMap<QMessageBox::StandardButton, QString>& buttonTexts;
    int textControlType;
};

// Gives a borrowed widget back, also when the dialog went away with its parent while it was open.
class Loan
{
public:
    explicit Loan(QWidget* w) : widget(w), owner(w ? w->parentWidget() : nullptr) {}
    ~Loan()
    {
        if (widget) {
            widget->hide();
            widget->setParent(owner);
        }
    }
    Q_DISABLE_COPY(Loan)

private:
    QPointer<QWidget> widget;
    QPointer<QWidget> owner;
};

int Ask(MessageDialog::Kind kind, const Request& request)
{
    // The parent owns the dialog too, and may take it along while the box is open.
    QPointer<MessageDialog> box = new MessageDialog(kind, request.text, request.parent, request.modal);
    int answer = QMessageBox::Cancel;
    {
        const Loan loan(request.extra);
        if (request.extra)
            box->SetExtraWidget(request.extra);
        box->SetTextSelectable(request.textControlType == 1);
        box->AddButtons(request.buttons, request.buttonTexts);
        box->exec();
        if (box)
            answer = box->GetAnswer();
    }
    delete box.data();
    return answer;
}
} // namespace

int PackagedMsgBox::information(const QString& text, QWidget* parent, QMessageBox::StandardButtons buttons,
                                bool modal, QWidget* extra,
                                const QMap<QMessageBox::StandardButton, QString>& buttonTexts,
                                int textControlType)
{
    return Ask(MessageDialog::Kind::Information,
               {text, parent, buttons, modal, extra, buttonTexts, textControlType});
}

int PackagedMsgBox::warn(const QString& text, QWidget* parent, QMessageBox::StandardButtons buttons,
                         bool modal, QWidget* extra,
                         const QMap<QMessageBox::StandardButton, QString>& buttonTexts, int textControlType)
{
    return Ask(MessageDialog::Kind::Warning,
               {text, parent, buttons, modal, extra, buttonTexts, textControlType});
}

int PackagedMsgBox::question(const QString& text, QWidget* parent, QMessageBox::StandardButtons buttons,
                             bool modal, QWidget* extra,
                             const QMap<QMessageBox::StandardButton, QString>& buttonTexts,
                             int textControlType)
{
    return Ask(MessageDialog::Kind::Question,
               {text, parent, buttons, modal, extra, buttonTexts, textControlType});
}
