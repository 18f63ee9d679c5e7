// SPDX-License-Identifier: Apache-2.0

#include "RunNotice.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTheme.h>

#include <QHBoxLayout>
#include <QPlainTextEdit>

namespace
{
constexpr int detailsHeight = 140;

QPushButton* AddButton(QHBoxLayout& row, const char* name, const QString& text)
{
    auto* button = new WbPushButton(nullptr, Wb::SecondaryButton);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    row.addWidget(button);
    return button;
}
} // namespace

RunNotice::RunNotice(QWidget* parent) : QFrame(parent), text(new WbLabel), details(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("runNotice"));
    text->setObjectName(QStringLiteral("labelRunProblem"));
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(text, 1);
    again = AddButton(*row, "buttonRunAgain", QString());
    more = AddButton(*row, "buttonRunDetails", QStringLiteral("详细信息"));
    more->setCheckable(true);
    QPushButton* const report = AddButton(*row, "buttonRunReport", QStringLiteral("发送给作者"));
    details->setObjectName(QStringLiteral("textRunDetails"));
    details->setAccessibleName(QStringLiteral("详细信息"));
    details->setReadOnly(true);
    details->setFont(WbTheme::CodeFont());
    details->setFixedHeight(detailsHeight);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 8, 16, 8);
    layout->setSpacing(8);
    layout->addLayout(row);
    layout->addWidget(details);
    hide();
    connect(again, &QPushButton::clicked, this, &RunNotice::SigAgain);
    connect(more, &QPushButton::toggled, details, &QWidget::setVisible);
    connect(report, &QPushButton::clicked, this, &RunNotice::SigReport);
    WbScaledForm::Follow(this);
}

void RunNotice::Tell(const QString& problem, const QString& againText, const QString& technical)
{
    text->setText(problem);
    again->setText(againText);
    details->setPlainText(technical);
    more->setChecked(false);
    details->hide();
    more->setVisible(!technical.isEmpty());
    show();
}
