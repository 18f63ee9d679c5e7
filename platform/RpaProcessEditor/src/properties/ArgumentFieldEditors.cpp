// SPDX-License-Identifier: Apache-2.0

#include "ArgumentField_p.h"
#include "ConditionRows_p.h"
#include "GridEdit_p.h"
#include "ValueEdit_p.h"

#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbLineLimit.h>
#include <WbBaseUI/WbSystemDialogs.h>
#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbTheme.h>

#include <QCompleter>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QToolButton>

// The editors that a field chooses from.

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

QWidget* ArgumentField::MakeEditor()
{
    if (view == View::Form)
        return BuildForm();
    if (view == View::Pieces)
        return BuildPieces();
    if (view == View::Python || info.type == RpaArgumentType::Expression)
        return BuildLine(offers.variables, true);
    if (info.multiline)
        return BuildMultiline();
    if (HasChoices(info.type))
        return BuildCombo(Choices(), false);
    if (info.type == RpaArgumentType::Variable)
        return BuildCombo(Plain(offers.variables), true);
    if (info.type == RpaArgumentType::Parameter)
        return BuildCombo(Plain(offers.parameters), true);
    if (info.type == RpaArgumentType::File || info.type == RpaArgumentType::Folder)
        return BuildPath();
    return BuildLine(info.type == RpaArgumentType::Number ? offers.variables : QStringList(), false);
}

QWidget* ArgumentField::BuildForm()
{
    FormEditor* form = nullptr;
    if (info.form == RpaArgumentForm::Condition)
        form = new ConditionRows(offers);
    else
        form = new GridEdit(info, offers);
    form->setObjectName(QStringLiteral("editor"));
    connect(form, &FormEditor::SigEdited, this, &ArgumentField::TakeStored);
    connect(form, &FormEditor::SigFinished, this, &ArgumentField::SigEditingFinished);
    return form;
}

QWidget* ArgumentField::BuildPieces()
{
    auto* edit = new ValueEdit(info.multiline ? ValueEdit::Lines::Several : ValueEdit::Lines::One);
    edit->setObjectName(QStringLiteral("editor"));
    connect(edit, &ValueEdit::SigEdited, this, [this, edit] {
        RpaValue value{edit->Parts(), true};
        const auto before = ArgumentText::Pieces(info.type, text);
        value.isText = before && before->isText;
        TakeStored(ArgumentText::Stored(info.type, value));
    });
    connect(edit, &ValueEdit::SigFinished, this, &ArgumentField::SigEditingFinished);
    return edit;
}

QWidget* ArgumentField::BuildLine(const QStringList& completions, bool code)
{
    auto* line = new WbLineEdit;
    new WbLineLimit(line, info.title);
    line->setObjectName(QStringLiteral("editor"));
    line->setPlaceholderText(PlaceholderOf(info.type, view == View::Python));
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
    edit->setPlaceholderText(PlaceholderOf(info.type, view == View::Python));
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
        combo->lineEdit()->setPlaceholderText(PlaceholderOf(info.type, view == View::Python));
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
