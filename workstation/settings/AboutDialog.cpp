// SPDX-License-Identifier: Apache-2.0

#include "AboutDialog.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QFormLayout>
#include <QGuiApplication>

AboutDialog::AboutDialog(const QString& serverProgram, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), facts(serverProgram),
      version(new QFormLayout), details(new QWidget(this))
{
    setObjectName(QStringLiteral("AboutDialog"));
    SetTitle(QStringLiteral("关于工作站"));
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(16);
    layout->addWidget(new WbLabel(QStringLiteral("RPA 工作站：搭建、调试和发布自动化应用。"), this));
    CreateFacts();
    layout->addLayout(version);
    layout->addWidget(details);
    layout->addStretch();
    layout->addLayout(CreateButtons());
    close->setFocus(); // not before it has its place
    ShowFacts();
    connect(&facts, &BuildInfo::SigChanged, this, &AboutDialog::ShowFacts);
    WbScaledForm::Follow(GetContentWidget());
}

void AboutDialog::CreateFacts()
{
    details->setObjectName(QStringLiteral("aboutDetails"));
    details->hide();
    auto* technical = new QFormLayout(details);
    technical->setContentsMargins(0, 0, 0, 0);
    for (QFormLayout* form : {version, technical}) {
        form->setHorizontalSpacing(24);
        form->setVerticalSpacing(8);
    }
    for (const BuildFact& fact : facts.GetFacts())
        AddFact(values.isEmpty() ? version : technical, fact);
}

void AboutDialog::AddFact(QFormLayout* form, const BuildFact& fact)
{
    auto* value = new WbLabel(this);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    value->setWordWrap(true);
    value->setMinimumWidth(380); // what is still asked for finds room when it comes
    form->addRow(new WbLabel(fact.name, this), value);
    values.append(value);
}

QLayout* AboutDialog::CreateButtons()
{
    auto* more = new WbPushButton(this, Wb::SecondaryButton);
    more->setObjectName(QStringLiteral("buttonAboutDetails"));
    more->setText(QStringLiteral("详细信息"));
    more->setCheckable(true);
    auto* copy = new WbPushButton(this, Wb::SecondaryButton);
    copy->setObjectName(QStringLiteral("buttonCopyFacts"));
    copy->setText(QStringLiteral("复制"));
    close = new WbPushButton(this, Wb::PrimaryButton);
    close->setObjectName(QStringLiteral("buttonCloseAbout"));
    close->setText(QStringLiteral("关闭"));
    close->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addWidget(more);
    buttons->addStretch();
    buttons->addWidget(copy);
    buttons->addWidget(close);
    connect(more, &QPushButton::toggled, this, &AboutDialog::ShowDetails);
    connect(copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(facts.GetText()); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    return buttons;
}

void AboutDialog::ShowFacts()
{
    const QVector<BuildFact> all = facts.GetFacts();
    for (int i = 0; i < all.size(); ++i) {
        values.at(i)->setText(all.at(i).value);
        values.at(i)->setAccessibleName(QStringLiteral("%1：%2").arg(all.at(i).name, all.at(i).value));
    }
}

// Grows to all sides, so that it stays in the middle.
void AboutDialog::ShowDetails(bool shown)
{
    const QPoint middle = geometry().center();
    details->setVisible(shown);
    GetContentWidget()->layout()->activate(); // or the size would be that of before
    adjustSize();
    move(pos() + middle - geometry().center());
}
