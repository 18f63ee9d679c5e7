// SPDX-License-Identifier: Apache-2.0

#include "AppTagsDialog.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QRegularExpression>

#include <algorithm>

namespace
{
constexpr int mostTags = 10;
constexpr int longestTag = 20;
constexpr int mostShown = 30;

WbLabel* Text(const char* name, const QString& text, QWidget* parent)
{
    auto* label = new WbLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText); // it holds foreign names
    label->setWordWrap(true);
    return label;
}

QString KnownText(const QStringList& known)
{
    return known.isEmpty() ? QString()
                           : QStringLiteral("已有的标签：") +
                                 QStringList(known.mid(0, mostShown)).join(QStringLiteral("、"));
}
} // namespace

AppTagsDialog::AppTagsDialog(const AppRecord& app, const QStringList& known, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), editTags(new WbLineEdit(this)),
      labelProblem(Text("labelProblem", QString(), this)), buttonOk(new WbPushButton(this, Wb::PrimaryButton))
{
    setObjectName(QStringLiteral("AppTagsDialog"));
    SetTitle(QStringLiteral("标签"));

    auto* caption = Text("labelCaption", QStringLiteral("标签之间用空格或逗号分开"), this);
    caption->setBuddy(editTags);
    editTags->setObjectName(QStringLiteral("editTags"));
    editTags->setAccessibleName(QStringLiteral("标签"));
    editTags->setPlaceholderText(QStringLiteral("例如：财务，月结"));
    editTags->setText(app.tags.join(QStringLiteral("，")));
    buttonOk->setObjectName(QStringLiteral("buttonOk"));
    buttonOk->setText(QStringLiteral("确定"));
    buttonOk->setDefault(true);
    auto* buttonCancel = new WbPushButton(this, Wb::SecondaryButton);
    buttonCancel->setObjectName(QStringLiteral("buttonCancel"));
    buttonCancel->setText(QStringLiteral("取消"));
    buttonCancel->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    buttons->addWidget(buttonOk);
    buttons->addWidget(buttonCancel);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(caption);
    layout->addWidget(editTags);
    layout->addWidget(Text("labelKnown", KnownText(known), this));
    layout->addWidget(labelProblem);
    layout->addStretch();
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(460), DpiTool::ScaleDefault(250));

    connect(editTags, &QLineEdit::textChanged, labelProblem, &QLabel::clear);
    connect(editTags, &QLineEdit::returnPressed, this, &AppTagsDialog::SlotConfirm);
    connect(buttonOk, &QPushButton::clicked, this, &AppTagsDialog::SlotConfirm);
    connect(buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    editTags->setFocus();
}

AppTagsDialog::~AppTagsDialog() = default;

QStringList AppTagsDialog::GetTags() const
{
    return Read(editTags->text());
}

void AppTagsDialog::ShowProblem(const QString& problem)
{
    SetBusy(false);
    labelProblem->setText(problem);
    editTags->setFocus();
}

QStringList AppTagsDialog::Read(const QString& line)
{
    static const QRegularExpression between(QStringLiteral("[\\s,，、;；]+"));
    QStringList tags;
    for (QString tag : line.split(between, Qt::SkipEmptyParts)) {
        while (tag.startsWith(QLatin1Char('#')))
            tag.remove(0, 1); // as it is looked for
        if (!tag.isEmpty() && !tags.contains(tag, Qt::CaseInsensitive))
            tags << tag;
    }
    return tags;
}

QString AppTagsDialog::ProblemOf(const QStringList& tags)
{
    if (tags.size() > mostTags)
        return QStringLiteral("一个应用最多 %1 个标签，现在有 %2 个").arg(mostTags).arg(tags.size());
    const auto isLong = [](const QString& tag) { return tag.size() > longestTag; };
    const auto found = std::find_if(tags.begin(), tags.end(), isLong);
    return found == tags.end() ? QString()
                               : QStringLiteral("标签“%1”超过了 %2 个字符").arg(*found).arg(longestTag);
}

void AppTagsDialog::SlotConfirm()
{
    const QString problem = ProblemOf(GetTags());
    if (!problem.isEmpty()) {
        ShowProblem(problem);
    } else if (buttonOk->isEnabled()) {
        SetBusy(true);
        emit SigConfirmed();
    }
}

void AppTagsDialog::SetBusy(bool busy)
{
    // Disabled it would hand the focus on to the button that cancels, and with it the key being pressed.
    editTags->setReadOnly(busy);
    buttonOk->setEnabled(!busy);
}
