// SPDX-License-Identifier: Apache-2.0

#include "RowsDialog.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QScrollArea>
#include <QVariant>

RowsDialog::RowsDialog(const QString& title, const QString& caption, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    SetTitle(title);
    labelState = MakeLabel("labelState", QString(), this);
    labelState->setWordWrap(true);
    auto* list = new QWidget(this);
    rows = new QVBoxLayout(list);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(8);
    auto* close = MakeButton("buttonClose", QStringLiteral("完成"), Wb::PrimaryButton, this);
    buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    buttons->addWidget(close);
    Layout(caption, list);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

RowsDialog::~RowsDialog() = default;

void RowsDialog::Layout(const QString& captionText, QWidget* list)
{
    auto* caption = MakeLabel("labelCaption", captionText, this);
    caption->setWordWrap(true);
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("scrollRows"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(list);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(caption);
    layout->addWidget(scroll, 1);
    layout->addWidget(labelState);
    layout->addLayout(buttons);
}

WbLabel* RowsDialog::MakeLabel(const char* objectName, const QString& text, QWidget* parent)
{
    auto* label = new WbLabel(text, parent);
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    return label;
}

WbPushButton* RowsDialog::MakeButton(const char* objectName, const QString& text, int type, QWidget* parent)
{
    auto* button = new WbPushButton(parent, type);
    button->setObjectName(QLatin1String(objectName));
    button->setText(text);
    button->setAutoDefault(false);
    return button;
}

QFrame* RowsDialog::AddRow(WbLabel* text, WbLabel* hint, const QVector<WbPushButton*>& acts)
{
    auto* row = new QFrame(this);
    row->setProperty("card", true);
    hint->setProperty("hint", true);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(text);
    texts->addWidget(hint);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(12);
    layout->addLayout(texts, 1);
    for (WbPushButton* act : acts)
        layout->addWidget(act);
    WbScaledForm::Follow(row);
    rows->addWidget(row);
    return row;
}

void RowsDialog::ClearRows()
{
    while (QLayoutItem* item = rows->takeAt(0)) {
        // Later: the answer may have come from within a button of the row.
        if (item->widget()) {
            item->widget()->hide();
            item->widget()->deleteLater();
        }
        delete item;
    }
}

void RowsDialog::AddButton(WbPushButton* button)
{
    buttons->insertWidget(0, button);
    setTabOrder(button, GetContentWidget()->findChild<WbPushButton*>(QStringLiteral("buttonClose")));
}

void RowsDialog::Say(const QString& text, bool isProblem)
{
    labelState->setObjectName(isProblem ? QStringLiteral("labelProblem") : QStringLiteral("labelState"));
    labelState->setStyleSheet(labelState->styleSheet()); // the rule of the new name
    labelState->setText(text);
    labelState->setVisible(!text.isEmpty());
}
