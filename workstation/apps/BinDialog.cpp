// SPDX-License-Identifier: Apache-2.0

#include "BinDialog.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QListWidget>

BinDialog::BinDialog(DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), dateLanguage(language),
      list(new QListWidget(this)), labelState(new WbLabel(this)),
      buttonRestore(CreateButton("buttonRestore", QStringLiteral("恢复"))),
      buttonPurge(CreateButton("buttonPurge", QStringLiteral("彻底删除"))),
      buttonEmpty(CreateButton("buttonEmptyBin", QStringLiteral("清空回收站")))
{
    setObjectName(QStringLiteral("BinDialog"));
    SetTitle(QStringLiteral("回收站"));

    auto* caption = new WbLabel(QStringLiteral("删除的应用保留 30 天，恢复后与删除时一样。"), this);
    caption->setWordWrap(true);
    list->setObjectName(QStringLiteral("listBin"));
    list->setAccessibleName(QStringLiteral("已删除的应用"));
    labelState->setObjectName(QStringLiteral("labelState"));
    labelState->setTextFormat(Qt::PlainText);
    labelState->setWordWrap(true);
    auto* close = CreateButton("buttonClose", QStringLiteral("关闭"));

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addWidget(buttonRestore);
    buttons->addWidget(buttonPurge);
    buttons->addWidget(buttonEmpty);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(caption);
    layout->addWidget(list, 1);
    layout->addWidget(labelState);
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(560), DpiTool::ScaleDefault(400));
    ConnectButtons(close);
    SlotChoiceChanged();
    Say(QStringLiteral("正在读取回收站…"));
}

BinDialog::~BinDialog() = default;

WbPushButton* BinDialog::CreateButton(const char* name, const QString& text)
{
    auto* button = new WbPushButton(this, Wb::SecondaryButton);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setAutoDefault(false);
    return button;
}

void BinDialog::ConnectButtons(WbPushButton* close)
{
    connect(list, &QListWidget::currentRowChanged, this, &BinDialog::SlotChoiceChanged);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(buttonRestore, &QPushButton::clicked, this, [this] { emit SigRestore(Chosen().first()); });
    connect(buttonPurge, &QPushButton::clicked, this, [this] { emit SigPurge(Chosen()); });
    connect(buttonEmpty, &QPushButton::clicked, this, [this] {
        QVector<VersionServiceApp> all;
        for (const VersionServiceDeletedApp& deleted : qAsConst(shown))
            all << deleted.app;
        emit SigPurge(all);
    });
}

void BinDialog::ShowApps(const QVector<VersionServiceDeletedApp>& apps)
{
    const int row = list->currentRow();
    shown = apps;
    list->clear();
    for (const VersionServiceDeletedApp& deleted : apps) {
        list->addItem(
            QStringLiteral("%1    %2 创建，删除于 %3")
                .arg(deleted.app.name, deleted.app.creatorName, DateText(deleted.deletedAt, dateLanguage)));
    }
    list->setCurrentRow(qBound(0, row, list->count() - 1));
    SlotChoiceChanged();
    Say(apps.isEmpty() ? QStringLiteral("回收站是空的。") : QString());
}

void BinDialog::ShowProblem(const QString& problem)
{
    Say(problem);
}

void BinDialog::Say(const QString& text)
{
    labelState->setText(text);
}

QVector<VersionServiceApp> BinDialog::Chosen() const
{
    const int row = list->currentRow();
    return row < 0 || row >= shown.size() ? QVector<VersionServiceApp>()
                                          : QVector<VersionServiceApp>{shown.at(row).app};
}

void BinDialog::SlotChoiceChanged()
{
    buttonRestore->setEnabled(!Chosen().isEmpty());
    buttonPurge->setEnabled(!Chosen().isEmpty());
    buttonEmpty->setEnabled(!shown.isEmpty());
}
