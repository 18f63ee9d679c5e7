// SPDX-License-Identifier: Apache-2.0

#include "AboutDialog.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QClipboard>
#include <QGuiApplication>

AboutDialog::AboutDialog(const QString& serverProgram, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), facts(serverProgram)
{
    setObjectName(QStringLiteral("AboutDialog"));
    SetTitle(QStringLiteral("关于工作站"));
    ui.setupUi(GetContentWidget());
    ui.aboutDetails->hide();
    for (const BuildFact& fact : facts.GetFacts())
        AddFact(values.isEmpty() ? ui.layoutVersion : ui.layoutDetails, fact);
    ui.buttonCloseAbout->setFocus();
    ShowFacts();
    connect(&facts, &BuildInfo::SigChanged, this, &AboutDialog::ShowFacts);
    connect(ui.buttonAboutDetails, &QPushButton::toggled, this, &AboutDialog::ShowDetails);
    connect(ui.buttonCopyFacts, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(facts.GetText()); });
    connect(ui.buttonCloseAbout, &QPushButton::clicked, this, &QDialog::accept);
    WbScaledForm::Follow(GetContentWidget());
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
    ui.aboutDetails->setVisible(shown);
    GetContentWidget()->layout()->activate(); // or the size would be that of before
    adjustSize();
    move(pos() + middle - geometry().center());
}
