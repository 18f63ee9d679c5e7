// SPDX-License-Identifier: Apache-2.0

#include "MessageDialog_p.h"
#include "MessageText_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace
{
constexpr int messageIconSize = 24;
constexpr int messageWidth = 320;
constexpr int longestMessage = 600;
constexpr int mostMessageLines = 16;

struct ButtonRow
{
    QMessageBox::StandardButton button;
    const char* objectName;
    const char16_t* text;
};

// In the order in which they stand from left to right.
constexpr ButtonRow buttonRows[] = {
    {QMessageBox::Help, "msgBoxHelp", u"帮助"},
    {QMessageBox::Reset, "msgBoxReset", u"重置"},
    {QMessageBox::RestoreDefaults, "msgBoxRestoreDefaults", u"恢复默认"},
    {QMessageBox::Ok, "msgBoxOk", u"确定"},
    {QMessageBox::Open, "msgBoxOpen", u"打开"},
    {QMessageBox::Save, "msgBoxSave", u"保存"},
    {QMessageBox::SaveAll, "msgBoxSaveAll", u"全部保存"},
    {QMessageBox::Yes, "msgBoxYes", u"是"},
    {QMessageBox::YesToAll, "msgBoxYesToAll", u"全部是"},
    {QMessageBox::Retry, "msgBoxRetry", u"重试"},
    {QMessageBox::Apply, "msgBoxApply", u"应用"},
    {QMessageBox::Ignore, "msgBoxIgnore", u"忽略"},
    {QMessageBox::Discard, "msgBoxDiscard", u"不保存"},
    {QMessageBox::No, "msgBoxNo", u"否"},
    {QMessageBox::NoToAll, "msgBoxNoToAll", u"全部否"},
    {QMessageBox::Abort, "msgBoxAbort", u"中止"},
    {QMessageBox::Close, "msgBoxClose", u"关闭"},
    {QMessageBox::Cancel, "msgBoxCancel", u"取消"},
};

// A warning must not be agreed to by a Return key pressed too early.
constexpr QMessageBox::StandardButton safeAnswers[] = {QMessageBox::Cancel, QMessageBox::No,
                                                       QMessageBox::Close, QMessageBox::Abort};

QMessageBox::StandardButton DefaultAnswer(MessageDialog::Kind kind, QMessageBox::StandardButtons buttons)
{
    if (kind == MessageDialog::Kind::Warning) {
        for (const auto safe : safeAnswers)
            if (buttons.testFlag(safe))
                return safe;
    }
    for (const ButtonRow& row : buttonRows) {
        const bool agrees = row.button != QMessageBox::Help && row.button != QMessageBox::Reset &&
                            row.button != QMessageBox::RestoreDefaults;
        if (agrees && buttons.testFlag(row.button))
            return row.button;
    }
    return QMessageBox::NoButton;
}

struct Look
{
    const char* icon;
    WbColor color;
    const char16_t* title;
};

Look LookOf(MessageDialog::Kind kind)
{
    switch (kind) {
    case MessageDialog::Kind::Warning:
        return {"warning", WbColor::WarningText, u"警告"};
    case MessageDialog::Kind::Question:
        return {"question", WbColor::AccentText, u"请确认"};
    case MessageDialog::Kind::Information:
        break;
    }
    return {"info", WbColor::AccentText, u"提示"};
}
} // namespace

MessageDialog::MessageDialog(Kind k, const QString& text, QWidget* parent, bool modal)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 0, modal), kind(k)
{
    setObjectName(QStringLiteral("PackagedMsgBox"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    SetTitle(QString::fromUtf16(LookOf(kind).title));

    QWidget* content = GetContentWidget();
    labelIcon = new QLabel(content);
    labelIcon->setObjectName(QStringLiteral("msgBoxIcon"));
    labelText = new QLabel(ShowableMessage(text, longestMessage, mostMessageLines), content);
    labelText->setObjectName(QStringLiteral("msgBoxText"));
    labelText->setTextFormat(Qt::PlainText);
    labelText->setWordWrap(true);
    setAccessibleDescription(labelText->text());
    textColumn = new QVBoxLayout;
    textColumn->addWidget(labelText);
    auto* body = new QHBoxLayout;
    body->addWidget(labelIcon, 0, Qt::AlignTop);
    body->addLayout(textColumn, 1);
    buttonRow = new QWidget(content);
    (new QHBoxLayout(buttonRow))->addStretch(1);
    auto* root = new QVBoxLayout(content);
    root->addLayout(body, 1);
    root->addWidget(buttonRow);
    MessageDialog::AdjustForDpi();
}

void MessageDialog::AddButtons(QMessageBox::StandardButtons buttons, const ButtonTexts& texts)
{
    // A box without any button could only be closed by its corner.
    const auto wanted =
        buttons == QMessageBox::NoButton ? QMessageBox::StandardButtons(QMessageBox::Ok) : buttons;
    const QMessageBox::StandardButton preferred = DefaultAnswer(kind, wanted);
    for (const ButtonRow& row : buttonRows) {
        if (wanted.testFlag(row.button)) {
            AddButton(row.button, texts.value(row.button, QString::fromUtf16(row.text)),
                      row.button == preferred);
            buttonRow->findChildren<WbPushButton*>().constLast()->setObjectName(
                QLatin1String(row.objectName));
        }
    }
}

void MessageDialog::AddButton(QMessageBox::StandardButton button, const QString& text, bool isDefault)
{
    const bool primary = isDefault || (kind != Kind::Warning && button == QMessageBox::Ok);
    auto* push = new WbPushButton(buttonRow, primary ? Wb::PrimaryButton : Wb::SecondaryButton);
    push->setText(text);
    push->setAutoDefault(true);
    push->setDefault(isDefault);
    buttonRow->layout()->addWidget(push);
    if (isDefault)
        push->setFocus();
    connect(push, &QPushButton::clicked, this, [this, button] {
        answer = button;
        accept();
    });
}

void MessageDialog::SetExtraWidget(QWidget* extra)
{
    textColumn->addWidget(extra);
    extra->show();
}

void MessageDialog::SetTextSelectable(bool selectable)
{
    if (selectable)
        labelText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void MessageDialog::AdjustForDpi()
{
    WbBaseDialog::AdjustForDpi();
    const int side = DpiTool::ScaleDefault(messageIconSize);
    const Look look = LookOf(kind);
    labelIcon->setPixmap(WbIcons::Pixmap(QLatin1String(look.icon), side, look.color, devicePixelRatioF()));
    labelText->setMinimumWidth(DpiTool::ScaleDefault(messageWidth));
    auto* root = GetContentWidget()->layout();
    root->setContentsMargins(DpiTool::ScaleDefault(16), DpiTool::ScaleDefault(8), DpiTool::ScaleDefault(16),
                             DpiTool::ScaleDefault(16));
    root->setSpacing(DpiTool::ScaleDefault(24));
    root->itemAt(0)->layout()->setSpacing(DpiTool::ScaleDefault(12));
    textColumn->setSpacing(DpiTool::ScaleDefault(12));
    buttonRow->layout()->setContentsMargins(0, 0, 0, 0);
    buttonRow->layout()->setSpacing(DpiTool::ScaleDefault(8));
}
