// SPDX-License-Identifier: Apache-2.0

#include "RowsDialog.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QVariant>

RowsDialog::RowsDialog(const QString& title, const QString& caption, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    ui.setupUi(GetContentWidget());
    SetTitle(title);
    ui.labelCaption->setText(caption);
    ui.buttonClose->setFocus();
    connect(ui.buttonClose, &QPushButton::clicked, this, &QDialog::accept);
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
    Rows()->addWidget(row);
    return row;
}

void RowsDialog::ClearRows()
{
    while (QLayoutItem* item = Rows()->takeAt(0)) {
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
    ui.rowButtons->insertWidget(0, button);
    setTabOrder(button, ui.buttonClose);
}

void RowsDialog::Say(const QString& text, bool isProblem)
{
    ui.labelState->setObjectName(isProblem ? QStringLiteral("labelProblem") : QStringLiteral("labelState"));
    ui.labelState->setStyleSheet(ui.labelState->styleSheet()); // the rule of the new name
    ui.labelState->setText(text);
    ui.labelState->setVisible(!text.isEmpty());
}

void RowsDialog::FitRows(int most)
{
    const int across = GetContentWidget()->minimumWidth() - 2 * ui.layoutDialog->contentsMargins().left();
    const int wanted =
        Rows()->hasHeightForWidth() ? Rows()->heightForWidth(across) : Rows()->sizeHint().height();
    ui.scrollRows->setFixedHeight(qMin(wanted, DpiTool::ScaleDefault(most)));
    ui.scrollRows->setVisible(wanted > 0);
    if (!isVisible())
        return;
    const QPoint middle = geometry().center();
    ui.layoutDialog->activate(); // or the size would be that of before
    adjustSize();
    move(pos() + middle - geometry().center());
}
