#include "ArgumentField_p.h"
#include "ProblemLabel_p.h"

#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbLineLimit.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbTheme.h>

#include <QCompleter>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
bool HasChoices(RpaArgumentType type)
{
    return type == RpaArgumentType::Choice || type == RpaArgumentType::Switch ||
           type == RpaArgumentType::Process || type == RpaArgumentType::Element;
}

QVector<RpaChoice> Plain(const QStringList& values)
{
    QVector<RpaChoice> choices;
    for (const QString& value : values)
        choices.append({value, value});
    return choices;
}

QString PlaceholderOf(RpaArgumentType type, bool python)
{
    if (python || type == RpaArgumentType::Expression)
        return QStringLiteral("Python 表达式，例如 count + 1");
    switch (type) {
    case RpaArgumentType::Text:
        return QStringLiteral("文本，或以 = 开头写表达式");
    case RpaArgumentType::Number:
        return QStringLiteral("数字或表达式，例如 3 或 count + 1");
    case RpaArgumentType::Variable:
        return QStringLiteral("变量名");
    case RpaArgumentType::Parameter:
        return QStringLiteral("界面上的参数名");
    case RpaArgumentType::File:
        return QStringLiteral("文件路径");
    case RpaArgumentType::Folder:
        return QStringLiteral("文件夹路径");
    default:
        return QString();
    }
}
} // namespace

ArgumentField::ArgumentField(const RpaArgumentInfo& argument, const FieldOffers& fieldOffers, QWidget* parent)
    : QWidget(parent), info(argument), offers(fieldOffers), holder(new QWidget),
      message(new ProblemLabel(QStringLiteral("labelProblem"))), focus(new WbFocusForward(this, nullptr))
{
    setObjectName(QStringLiteral("field_") + info.name);
    auto* label =
        new QLabel(info.title.toHtmlEscaped() +
                   (info.required ? QStringLiteral(" <span style=\"color:#e5484d\">*</span>") : QString()));
    label->setTextFormat(Qt::RichText);
    label->setToolTip(info.description);
    auto* top = new QHBoxLayout;
    top->setContentsMargins(0, 0, 0, 0);
    top->addWidget(label);
    top->addStretch();
    if (ArgumentText::MayBePython(info.type)) {
        pythonButton = new QToolButton;
        pythonButton->setObjectName(QStringLiteral("pythonButton"));
        pythonButton->setText(QStringLiteral("fx"));
        pythonButton->setCheckable(true);
        pythonButton->setAutoRaise(true);
        pythonButton->setToolTip(QStringLiteral("用 Python 表达式计算"));
        pythonButton->setAccessibleName(info.title + QStringLiteral("：用表达式计算"));
        top->addWidget(pythonButton);
        connect(pythonButton, &QToolButton::clicked, this, [this](bool checked) {
            const QString shown = ArgumentText::Shown(info.type, text);
            SetPython(checked);
            Take(shown);
            ShowText();
            editor->setFocus();
        });
    }
    if (info.type == RpaArgumentType::Element)
        top->addWidget(BuildCaptureButton());
    auto* holderLayout = new QVBoxLayout(holder);
    holderLayout->setContentsMargins(0, 0, 0, 0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(top);
    layout->addWidget(holder);
    layout->addWidget(message);
    BuildEditor();
    ShowProblem();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

QWidget* ArgumentField::BuildCaptureButton()
{
    auto* capture = new QToolButton;
    capture->setObjectName(QStringLiteral("captureButton"));
    capture->setText(QStringLiteral("捕获"));
    capture->setIcon(WbIcons::Get(QStringLiteral("capture")));
    capture->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    capture->setAutoRaise(true);
    capture->setToolTip(QStringLiteral("在浏览器窗口中指出元素"));
    capture->setAccessibleName(info.title + QStringLiteral("：捕获"));
    connect(capture, &QToolButton::clicked, this, &ArgumentField::SigCaptureAsked);
    return capture;
}

void ArgumentField::Take(const QString& shown)
{
    text = ArgumentText::Stored(info.type, shown, python);
    // As in a spreadsheet: an "=" typed first begins an expression.
    if (!python && ArgumentText::MayBePython(info.type) && shown.startsWith(QLatin1Char('='))) {
        SetPython(true);
        ShowText();
        editor->setFocus();
    }
    ShowProblem();
    emit SigEdited(text);
}

void ArgumentField::SetText(const QString& shown)
{
    if (shown == text && editor)
        return;
    text = shown;
    if (ArgumentText::IsPython(info.type, text) != python)
        SetPython(!python);
    ShowText();
    ShowProblem();
}

void ArgumentField::SetPython(bool on)
{
    if (python == on)
        return;
    python = on;
    if (pythonButton)
        pythonButton->setChecked(on);
    BuildEditor();
}

void ArgumentField::BuildEditor()
{
    if (editor) {
        editor->hide();
        editor->disconnect(this);
        editor->deleteLater(); // its own signal may have brought us here
    }
    if (python || info.type == RpaArgumentType::Expression)
        editor = BuildLine(offers.variables, true);
    else if (info.multiline)
        editor = BuildMultiline();
    else if (HasChoices(info.type))
        editor = BuildCombo(Choices(), false);
    else if (info.type == RpaArgumentType::Variable)
        editor = BuildCombo(Plain(offers.variables), true);
    else if (info.type == RpaArgumentType::Parameter)
        editor = BuildCombo(Plain(offers.parameters), true);
    else if (info.type == RpaArgumentType::File || info.type == RpaArgumentType::Folder)
        editor = BuildPath();
    else
        editor = BuildLine(info.type == RpaArgumentType::Number ? offers.variables : QStringList(), false);
    editor->setAccessibleName(info.title);
    editor->setToolTip(info.description);
    holder->layout()->addWidget(editor);
    focus->SetPart(editor);
    // A button that stands above the editor comes before it, whenever the editor was made.
    if (pythonButton)
        setTabOrder(pythonButton, editor);
}

QWidget* ArgumentField::BuildLine(const QStringList& completions, bool code)
{
    auto* line = new WbLineEdit;
    new WbLineLimit(line, info.title);
    line->setObjectName(QStringLiteral("editor"));
    line->setPlaceholderText(PlaceholderOf(info.type, python));
    if (code)
        line->setFont(WbTheme::CodeFont());
    if (!completions.isEmpty()) {
        auto* completer = new QCompleter(completions, line);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        line->setCompleter(completer);
    }
    connect(line, &QLineEdit::textEdited, this, &ArgumentField::Take);
    connect(line, &QLineEdit::editingFinished, this, &ArgumentField::SigEditingFinished);
    return line;
}

QWidget* ArgumentField::BuildMultiline()
{
    auto* edit = new QPlainTextEdit;
    edit->setObjectName(QStringLiteral("editor"));
    new WbTextLimit(edit, info.title);
    edit->setPlaceholderText(PlaceholderOf(info.type, python));
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(edit->fontMetrics().height() * 4 + 16);
    connect(edit, &QPlainTextEdit::textChanged, this, [this, edit] { Take(edit->toPlainText()); });
    return edit;
}

QVector<RpaChoice> ArgumentField::Choices() const
{
    switch (info.type) {
    case RpaArgumentType::Switch:
        return {{QStringLiteral("true"), QStringLiteral("是")},
                {QStringLiteral("false"), QStringLiteral("否")}};
    case RpaArgumentType::Process:
        return Plain(offers.processes);
    case RpaArgumentType::Element:
        return offers.elements;
    default:
        return info.choices;
    }
}

QWidget* ArgumentField::BuildCombo(const QVector<RpaChoice>& choices, bool editable)
{
    WbComboBox* combo = editable ? new WbEditableCombo : new WbComboBox;
    combo->setObjectName(QStringLiteral("editor"));
    for (const RpaChoice& choice : choices)
        combo->addItem(choice.title, choice.value);
    combo->setCurrentIndex(-1);
    if (editable) {
        combo->lineEdit()->setPlaceholderText(PlaceholderOf(info.type, python));
        connect(combo, &QComboBox::editTextChanged, this, &ArgumentField::Take);
        connect(combo->lineEdit(), &QLineEdit::editingFinished, this, &ArgumentField::SigEditingFinished);
    } else {
        connect(combo, qOverload<int>(&QComboBox::activated), this,
                [this, combo](int index) { Take(combo->itemData(index).toString()); });
    }
    return combo;
}

QWidget* ArgumentField::BuildPath()
{
    auto* widget = new QWidget;
    auto* line = qobject_cast<WbLineEdit*>(BuildLine({}, false));
    auto* browse = new QToolButton;
    browse->setObjectName(QStringLiteral("browseButton"));
    browse->setText(QStringLiteral("…"));
    browse->setToolTip(QStringLiteral("浏览"));
    browse->setAccessibleName(info.title + QStringLiteral("：浏览"));
    auto* layout = new QHBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(line);
    layout->addWidget(browse);
    widget->setFocusProxy(line);
    line->setAccessibleName(info.title);
    connect(browse, &QToolButton::clicked, this, [this, line] {
        const bool folder = info.type == RpaArgumentType::Folder;
        const QString path =
            folder ? WbSystemDialogs::OpenFolder(this, info.title, line->text())
                   : WbSystemDialogs::SaveFile(this, info.title, line->text(), QString(), false);
        if (path.isEmpty())
            return;
        line->setText(path);
        Take(path);
    });
    return widget;
}

void ArgumentField::ShowText()
{
    const QString shown = ArgumentText::Shown(info.type, text);
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
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (!line)
        line = editor->findChild<QLineEdit*>();
    // What would be shown cut must not be written back.
    line->setReadOnly(shown.size() > WbLineLimit::mostCharacters);
    if (line->text() == shown)
        return;
    line->setText(shown);
    if (!line->hasFocus())
        line->setCursorPosition(0); // a long text is read from its beginning
}

void ArgumentField::ShowProblem()
{
    const QString problem = ArgumentText::Problem(info, text, offers);
    message->Tell(problem);
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (!line)
        line = editor->findChild<QLineEdit*>();
    if (line && line->property("hasError").toBool() == problem.isEmpty()) {
        line->setProperty("hasError", !problem.isEmpty());
        line->style()->unpolish(line); // the style sheet reads properties only then
        line->style()->polish(line);
    }
}
