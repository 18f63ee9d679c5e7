// SPDX-License-Identifier: Apache-2.0

#include "BinDialog.h"

#include <WbBaseUI/WbScaledForm.h>

BinDialog::BinDialog(DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), dateLanguage(language)
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("BinDialog"));
    SetTitle(QStringLiteral("回收站"));
    Connect();
    SlotChoiceChanged();
    Say(QStringLiteral("正在读取回收站…"));
}

void BinDialog::Connect()
{
    connect(ui.listBin, &QListWidget::currentRowChanged, this, &BinDialog::SlotChoiceChanged);
    connect(ui.buttonClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonRestore, &QPushButton::clicked, this, [this] { emit SigRestore(Chosen().first()); });
    connect(ui.buttonPurge, &QPushButton::clicked, this, [this] { emit SigPurge(Chosen()); });
    connect(ui.buttonEmptyBin, &QPushButton::clicked, this, [this] {
        QVector<VersionServiceApp> all;
        for (const VersionServiceDeletedApp& deleted : qAsConst(shown))
            all << deleted.app;
        emit SigPurge(all);
    });
}

void BinDialog::ShowApps(const QVector<VersionServiceDeletedApp>& apps)
{
    const int row = ui.listBin->currentRow();
    shown = apps;
    ui.listBin->clear();
    for (const VersionServiceDeletedApp& deleted : apps) {
        ui.listBin->addItem(
            QStringLiteral("%1    %2 创建，删除于 %3")
                .arg(deleted.app.name, deleted.app.creatorName, DateText(deleted.deletedAt, dateLanguage)));
    }
    ui.listBin->setCurrentRow(qBound(0, row, ui.listBin->count() - 1));
    SlotChoiceChanged();
    Say(apps.isEmpty() ? QStringLiteral("回收站是空的。") : QString());
}

QVector<VersionServiceApp> BinDialog::Chosen() const
{
    const int row = ui.listBin->currentRow();
    return row < 0 || row >= shown.size() ? QVector<VersionServiceApp>()
                                          : QVector<VersionServiceApp>{shown.at(row).app};
}

void BinDialog::SlotChoiceChanged()
{
    ui.buttonRestore->setEnabled(!Chosen().isEmpty());
    ui.buttonPurge->setEnabled(!Chosen().isEmpty());
    ui.buttonEmptyBin->setEnabled(!shown.isEmpty());
}
