// SPDX-License-Identifier: Apache-2.0

#include "ArgumentField_p.h"
#include "FieldTop_p.h"
#include "FormEditor_p.h"
#include "ProblemLabel_p.h"
#include "ValueEdit_p.h"
#include "ValuePicker_p.h"

#include <RpaProcessData/RpaExpression.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbLineLimit.h>

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

ArgumentField::ArgumentField(const RpaArgumentInfo& argument, const FieldOffers& fieldOffers, QWidget* parent)
    : QWidget(parent), info(argument), offers(fieldOffers), holder(new QWidget), hint(new QLabel),
      message(new ProblemLabel(QStringLiteral("labelProblem"))), focus(new WbFocusForward(this, nullptr))
{
    setObjectName(QStringLiteral("field_") + info.name);
    hint->setObjectName(QStringLiteral("labelHint"));
    hint->setProperty("wbRole", QStringLiteral("secondary"));
    hint->setWordWrap(true);
    hint->setTextFormat(Qt::PlainText);
    hint->hide();
    auto* holderLayout = new QVBoxLayout(holder);
    holderLayout->setContentsMargins(0, 0, 0, 0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(BuildTop());
    layout->addWidget(holder);
    layout->addWidget(hint);
    layout->addWidget(message);
    view = BestView();
    BuildEditor();
    ShowText();
    ShowProblem();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

QWidget* ArgumentField::BuildTop()
{
    auto* label =
        new QLabel(info.title.toHtmlEscaped() +
                   (info.required ? QStringLiteral(" <span style=\"color:#e5484d\">*</span>") : QString()));
    label->setTextFormat(Qt::RichText);
    label->setToolTip(info.description);
    auto* top = new FieldTop(label);
    const bool isCode = info.type == RpaArgumentType::Number || info.type == RpaArgumentType::Expression;
    if (ArgumentText::MayHavePieces(info.type) || isCode) {
        picker = new ValuePicker(offers, info.title, this);
        pickButton = picker->MakeButton();
        top->AddButton(pickButton);
        connect(picker, &ValuePicker::SigPicked, this, &ArgumentField::Pick);
        pickKey = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_Space), this);
        pickKey->setContext(Qt::WidgetWithChildrenShortcut);
        connect(pickKey, &QShortcut::activated, picker, &ValuePicker::Open);
    }
    if (ArgumentText::MayBePython(info.type) || info.form != RpaArgumentForm::Code)
        top->AddButton(BuildPythonButton());
    if (info.type == RpaArgumentType::Element)
        top->AddButton(BuildCaptureButton());
    return top;
}

QToolButton* ArgumentField::BuildPythonButton()
{
    pythonButton = new QToolButton;
    pythonButton->setObjectName(QStringLiteral("pythonButton"));
    pythonButton->setText(QStringLiteral("fx"));
    pythonButton->setCheckable(true);
    pythonButton->setAutoRaise(true);
    pythonButton->setToolTip(QStringLiteral("用 Python 表达式显示"));
    pythonButton->setAccessibleName(info.title + QStringLiteral("：用表达式显示"));
    connect(pythonButton, &QToolButton::clicked, this, &ArgumentField::SlotPythonClicked);
    return pythonButton;
}

QWidget* ArgumentField::BuildCaptureButton()
{
    auto* capture = UIUtils::IconButton(QStringLiteral("captureButton"), QStringLiteral("capture"),
                                        QStringLiteral("在浏览器窗口中指出元素"));
    capture->setText(QStringLiteral("捕获"));
    capture->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    capture->setAccessibleName(info.title + QStringLiteral("：捕获"));
    connect(capture, &QToolButton::clicked, this, &ArgumentField::SigCaptureAsked);
    return capture;
}

void ArgumentField::SlotPythonClicked(bool checked)
{
    const bool isEmpty = ArgumentText::Python(info, text).trimmed().isEmpty();
    if (!checked && isEmpty && !text.isEmpty())
        TakeStored(QString());
    SetView(checked ? View::Python : BestView());
    ShowText();
    ShowProblem();
    editor->setFocus();
}

// The view that needs no Python where there is one.
ArgumentField::View ArgumentField::BestView() const
{
    if (!ArgumentText::WhyPython(info, text).isEmpty())
        return View::Python;
    if (info.form != RpaArgumentForm::Code)
        return View::Form;
    if (!ArgumentText::IsPython(info.type, text))
        return View::Own;
    const auto pieces = ArgumentText::Pieces(info.type, text);
    const bool isShown = ArgumentText::MayHavePieces(info.type) && pieces && !pieces->IsEmpty();
    return isShown ? View::Pieces : View::Python;
}

void ArgumentField::Take(const QString& shown)
{
    const bool own = view == View::Own;
    // As in a spreadsheet: an "=" typed first begins an expression.
    const bool begins = own && ArgumentText::MayBePython(info.type) && shown.startsWith(QLatin1Char('='));
    text =
        ArgumentText::Stored(info.type, shown, view == View::Python && ArgumentText::MayBePython(info.type));
    if (begins) {
        SetView(View::Python);
        ShowText();
        editor->setFocus();
    }
    ShowProblem();
    emit SigEdited(text);
}

void ArgumentField::TakeStored(const QString& stored)
{
    text = stored;
    OrderTabs(); // there may be more rows than before
    ShowProblem();
    emit SigEdited(text);
}

void ArgumentField::SetText(const QString& shown)
{
    if (shown == text && editor)
        return;
    text = shown;
    const bool staysPython = view == View::Python && RpaExpression::IsPython(info.type, text) &&
                             pythonButton && pythonButton->hasFocus();
    SetView(staysPython ? View::Python : BestView());
    ShowText();
    ShowProblem();
}

void ArgumentField::SetView(View shown)
{
    if (pythonButton)
        pythonButton->setChecked(shown == View::Python);
    if (view == shown)
        return;
    view = shown;
    BuildEditor();
}

// A variable is a name in Python, and a piece of its own in a text.
void ArgumentField::Pick(const RpaValuePart& part)
{
    if (auto* pieces = qobject_cast<ValueEdit*>(editor)) {
        pieces->Insert(part);
    } else if (QLineEdit* line =
                   view == View::Python || !ArgumentText::MayHavePieces(info.type) ? Line() : nullptr) {
        const bool code = part.kind == RpaValuePart::Kind::Code;
        line->insert(code ? part.text : RpaExpression::ToPythonLiteral(part.text));
        Take(line->text());
    } else {
        PickIntoText(part);
    }
    editor->setFocus();
    emit SigEditingFinished();
}

// A text gets its first variable: from now on it is shown in pieces.
void ArgumentField::PickIntoText(const RpaValuePart& part)
{
    QString shown;
    int begin = 0;
    int end = 0;
    if (auto* multi = qobject_cast<QPlainTextEdit*>(editor)) {
        shown = multi->toPlainText();
        begin = multi->textCursor().selectionStart();
        end = multi->textCursor().selectionEnd();
    } else if (const QLineEdit* line = Line()) {
        shown = line->text();
        begin = line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
        end = line->hasSelectedText() ? line->selectionEnd() : begin;
    }
    RpaValue value;
    const QVector<RpaValuePart> parts{
        {RpaValuePart::Kind::Text, shown.left(begin)}, part, {RpaValuePart::Kind::Text, shown.mid(end)}};
    for (const RpaValuePart& piece : parts)
        if (!piece.text.isEmpty())
            value.parts.append(piece);
    TakeStored(ArgumentText::Stored(info.type, value));
    SetView(BestView());
    ShowText();
    if (auto* pieces = qobject_cast<ValueEdit*>(editor))
        pieces->SetCursor(begin + 1);
}

void ArgumentField::BuildEditor()
{
    if (editor) {
        editor->hide();
        editor->setObjectName(QString());
        editor->disconnect(this);
        editor->deleteLater(); // its own signal may have brought us here
    }
    editor = MakeEditor();
    if (editor->accessibleName().isEmpty())
        editor->setAccessibleName(info.title);
    editor->setToolTip(info.description);
    holder->layout()->addWidget(editor);
    editor->show(); // now, so that it can take the keyboard
    focus->SetPart(editor);
    // The values of a form have buttons of their own.
    if (pickButton) {
        pickButton->setVisible(view != View::Form);
        pickKey->setEnabled(view != View::Form);
    }
    // Buttons that stand above the editor come before it, whenever the editor was made.
    if (pickButton && pythonButton)
        setTabOrder(pickButton, pythonButton);
    if (pythonButton || pickButton)
        setTabOrder(pythonButton ? pythonButton : pickButton, editor);
}

QLineEdit* ArgumentField::Line() const
{
    if (view != View::Own && view != View::Python)
        return nullptr;
    auto* line = qobject_cast<QLineEdit*>(editor);
    return line ? line : editor->findChild<QLineEdit*>();
}

void ArgumentField::ShowText()
{
    if (auto* form = qobject_cast<FormEditor*>(editor)) {
        form->Show(text);
        return OrderTabs();
    }
    if (auto* pieces = qobject_cast<ValueEdit*>(editor))
        return pieces->SetParts(ArgumentText::Pieces(info.type, text).value_or(RpaValue()).parts);
    const QString shown =
        view == View::Python ? ArgumentText::Python(info, text) : ArgumentText::Shown(info.type, text);
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        const QSignalBlocker quiet(combo);
        combo->setCurrentIndex(combo->findData(shown));
        if (combo->isEditable())
            combo->setEditText(shown);
        else if (combo->currentIndex() < 0 && !shown.isEmpty())
            combo->setPlaceholderText(shown);
        return;
    }
    if (auto* multi = qobject_cast<QPlainTextEdit*>(editor)) {
        const QSignalBlocker quiet(multi);
        if (multi->toPlainText() != shown)
            multi->setPlainText(shown);
        return;
    }
    QLineEdit* line = Line();
    // What would be shown cut must not be written back.
    line->setReadOnly(shown.size() > WbLineLimit::mostCharacters);
    if (line->text() == shown)
        return;
    line->setText(shown);
    if (!line->hasFocus())
        line->setCursorPosition(0); // a long text is read from its beginning
}

// Widgets that were made later stand where they are seen.
void ArgumentField::OrderTabs()
{
    QWidget* before = pythonButton;
    const auto* form = qobject_cast<FormEditor*>(editor);
    const QList<QWidget*> stops = form ? form->TabStops() : QList<QWidget*>();
    for (QWidget* stop : stops) {
        setTabOrder(before, stop);
        before = stop;
    }
}

void ArgumentField::ShowProblem()
{
    const QString problem = ArgumentText::Problem(info, text, offers);
    message->Tell(problem);
    const QString why = view == View::Python ? ArgumentText::WhyPython(info, text) : QString();
    hint->setText(QStringLiteral("只能用表达式显示：%1").arg(why));
    hint->setVisible(!why.isEmpty() && problem.isEmpty());
    MarkProblem(!problem.isEmpty());
}

void ArgumentField::MarkProblem(bool problem)
{
    QWidget* marked = view == View::Pieces ? editor : Line();
    if (!marked || marked->property("hasError").toBool() == problem)
        return;
    marked->setProperty("hasError", problem);
    marked->style()->unpolish(marked); // the style sheet reads properties only then
    marked->style()->polish(marked);
}
