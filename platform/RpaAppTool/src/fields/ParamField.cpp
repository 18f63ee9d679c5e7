// SPDX-License-Identifier: Apache-2.0

#include "DateField_p.h"
#include "FileEndings_p.h"
#include "ParamField_p.h"
#include "ValueField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbLineLimit.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QCheckBox>
#include <QDoubleValidator>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

ParamField::ParamField(const RpaParamItem& item, QWidget* parent) : QWidget(parent), row(new QHBoxLayout)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(2));
    layout->addLayout(row);
    row->setSpacing(DpiTool::ScaleDefault(4));
    switch (item.type) {
    case RpaParamType::Number:
        AddNumberField(item);
        break;
    case RpaParamType::Date:
    case RpaParamType::DateTime:
        AddDateField(item.type == RpaParamType::DateTime);
        break;
    case RpaParamType::Choice:
        AddChoiceField(item);
        break;
    case RpaParamType::Switch:
        AddSwitchField();
        break;
    case RpaParamType::File:
    case RpaParamType::Folder:
        AddFileField(item);
        break;
    case RpaParamType::Text:
    case RpaParamType::Password:
        AddTextField(item);
        break;
    default:
        AddValueField(item);
    }
    field->setObjectName(QStringLiteral("paramField"));
    field->setAccessibleName(item.GetTitle());
    setFocusProxy(field);
    ShowItem(item);
}

void ParamField::AddTextField(const RpaParamItem& item)
{
    auto* edit = new WbLineEdit;
    new WbLineLimit(edit, item.GetTitle());
    edit->setPlaceholderText(item.hint);
    if (item.type == RpaParamType::Password)
        edit->setEchoMode(QLineEdit::Password);
    connect(edit, &QLineEdit::textEdited, this,
            [this](const QString& text) { emit SigEntered(text.isEmpty() ? QVariant() : QVariant(text)); });
    field = edit;
    row->addWidget(edit);
}

void ParamField::AddNumberField(const RpaParamItem& item)
{
    auto* edit = new WbLineEdit;
    edit->setPlaceholderText(item.hint);
    auto* validator = new QDoubleValidator(edit);
    validator->setLocale(QLocale::c());
    edit->setValidator(validator);
    connect(edit, &QLineEdit::textEdited, this,
            [this](const QString& text) { emit SigEntered(text.isEmpty() ? QVariant() : QVariant(text)); });
    field = edit;
    row->addWidget(edit);
}

void ParamField::AddDateField(bool withTime)
{
    auto* edit = new DateField(withTime);
    connect(edit, &QDateTimeEdit::dateTimeChanged, this, [this, edit] { emit SigEntered(edit->GetDate()); });
    field = edit;
    row->addWidget(edit, 1);
}

void ParamField::AddChoiceField(const RpaParamItem& item)
{
    auto* combo = new WbComboBox;
    combo->SetBusinessStyle(1);
    combo->addItem(QStringLiteral("请选择"), QVariant());
    for (const QString& choice : item.choices)
        combo->addItem(choice, choice);
    connect(combo, qOverload<int>(&QComboBox::activated), this,
            [this, combo](int index) { emit SigEntered(combo->itemData(index)); });
    field = combo;
    row->addWidget(combo, 1);
}

void ParamField::AddSwitchField()
{
    auto* box = new QCheckBox(QStringLiteral("开启"));
    connect(box, &QCheckBox::toggled, this, [this](bool on) { emit SigEntered(on); });
    field = box;
    row->addWidget(box);
    row->addStretch();
}

void ParamField::AddValueField(const RpaParamItem& item)
{
    valueField = ValueField::Create(item);
    connect(valueField, &ValueField::SigEntered, this, &ParamField::SigEntered);
    field = valueField->GetInput();
    row->addWidget(valueField, 1);
}

void ParamField::AddFileField(const RpaParamItem& item)
{
    AddTextField(item);
    const bool isFolder = item.type == RpaParamType::Folder;
    const QString act = isFolder ? QStringLiteral("选择文件夹") : QStringLiteral("选择文件");
    auto* button = new QToolButton;
    button->setIcon(WbIcons::Get(QStringLiteral("open")));
    button->setToolTip(act);
    button->setAccessibleName(act);
    connect(button, &QToolButton::clicked, this,
            [this, isFolder, act, filter = FileEndings::FilterOf(item.endings)] {
                TakePath(isFolder ? WbSystemDialogs::OpenFolder(this, act)
                                  : WbSystemDialogs::OpenFile(this, act, QString(), filter));
            });
    row->addWidget(button);
}

void ParamField::TakePath(const QString& path)
{
    if (path.isEmpty())
        return;
    ShowValue(path);
    emit SigEntered(path);
}

void ParamField::ShowItem(const RpaParamItem& item)
{
    const bool isNone = item.type == RpaParamType::Number && item.IsMissing();
    ShowValue(isNone ? QVariant(QString()) : item.GetEffectiveValue());
    SetMissing(item.IsMissing());
    if (problem && !problem->isHidden())
        ShowProblem(item.GetProblem());
}

void ParamField::ShowProblem(const QString& text)
{
    if (!problem && text.isEmpty())
        return;
    if (!problem) {
        problem = new WbLabel(this);
        problem->setObjectName(QStringLiteral("paramProblem"));
        problem->setWordWrap(true);
        layout()->addWidget(problem);
    }
    problem->setText(text);
    problem->setVisible(!text.isEmpty());
    field->setAccessibleDescription(text);
    field->setProperty("hasError", !text.isEmpty());
    field->style()->unpolish(field);
    field->style()->polish(field);
}

void ParamField::TakeCursor()
{
    field->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(field))
        edit->selectAll();
}

void ParamField::ShowValue(const QVariant& value)
{
    if (valueField) {
        valueField->ShowValue(value);
        return;
    }
    const QSignalBlocker blocker(field);
    if (auto* edit = qobject_cast<QLineEdit*>(field)) {
        const QString text = ShownText(*edit, value.toString());
        // A value that comes back while the user types it must not move the cursor.
        if (edit->text() != text && !(edit->hasFocus() && edit->text().toDouble() == value.toDouble() &&
                                      edit->validator() && value.isValid()))
            edit->setText(text);
    } else if (auto* date = qobject_cast<DateField*>(field)) {
        date->ShowDate(value);
    } else if (auto* combo = qobject_cast<QComboBox*>(field)) {
        combo->setCurrentIndex(qMax(0, combo->findData(value)));
    } else if (auto* box = qobject_cast<QCheckBox*>(field)) {
        box->setChecked(value.toBool());
    }
}

// What is shown cut must not be written back.
QString ParamField::ShownText(QLineEdit& edit, const QString& text)
{
    constexpr int shownStart = 1000;
    const bool isTooLong = text.size() > WbLineLimit::mostCharacters;
    if (edit.isReadOnly() != isTooLong) {
        edit.setReadOnly(isTooLong);
        edit.setToolTip(isTooLong ? QStringLiteral("内容太长（%1 个字），无法在一行中修改").arg(text.size())
                                  : QString());
    }
    return isTooLong ? text.left(shownStart) + QChar(0x2026) : text;
}

void ParamField::SetMissing(bool missing)
{
    if (field->property("missing").toBool() == missing)
        return;
    field->setProperty("missing", missing);
    field->setToolTip(missing ? QStringLiteral("必须填写") : QString());
    field->style()->unpolish(field);
    field->style()->polish(field);
}
