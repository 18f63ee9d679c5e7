// SPDX-License-Identifier: Apache-2.0

#include "WheelFolderRow.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QVariant>

WheelFolderRow::WheelFolderRow(const QString& folder, QWidget* parent)
    : WbBaseWidget(parent), chosen(folder), edit(new WbLineEdit(this)), labelProblem(new WbLabel(this))
{
    auto* caption = new WbLabel(QStringLiteral("本地安装包"), this);
    edit->setObjectName(QStringLiteral("editWheelFolder"));
    edit->setAccessibleName(QStringLiteral("本地安装包所在的文件夹"));
    edit->setPlaceholderText(QStringLiteral("存放 .whl 文件的文件夹，没有网络时从这里安装"));
    edit->setText(QDir::toNativeSeparators(folder));
    caption->setBuddy(edit);
    auto* browse = new WbPushButton(this, Wb::SecondaryButton);
    browse->setObjectName(QStringLiteral("buttonWheelFolder"));
    browse->setText(QStringLiteral("选择…"));
    browse->setIcon(WbIcons::Get(QStringLiteral("open")));
    browse->setAutoDefault(false);
    labelProblem->setObjectName(QStringLiteral("labelProblem"));
    labelProblem->setWordWrap(true);
    labelProblem->hide();

    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(caption);
    row->addWidget(edit, 1);
    row->addWidget(browse);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addLayout(row);
    layout->addWidget(labelProblem);

    connect(edit, &QLineEdit::editingFinished, this, &WheelFolderRow::SlotEntered);
    connect(edit, &QLineEdit::textEdited, labelProblem, &QWidget::hide);
    connect(browse, &QPushButton::clicked, this, &WheelFolderRow::SlotBrowse);
    WbScaledForm::Follow(this);
}

QString WheelFolderRow::Problem(const QString& text)
{
    const QFileInfo place(text);
    if (text.isEmpty() || (place.isAbsolute() && place.isDir()))
        return {};
    if (place.isRelative()) {
        return QStringLiteral("请输入文件夹的完整路径，例如 %1")
            .arg(QDir::toNativeSeparators(QDir::home().filePath(QStringLiteral("wheels"))));
    }
    return place.exists() ? QStringLiteral("请输入文件夹，而不是文件")
                          : QStringLiteral("找不到这个文件夹，请检查路径");
}

void WheelFolderRow::SlotBrowse()
{
    const QString folder =
        WbSystemDialogs::OpenFolder(this, QStringLiteral("选择本地安装包所在的文件夹"), chosen);
    if (!folder.isEmpty()) {
        edit->setText(QDir::toNativeSeparators(folder));
        SlotEntered();
    }
}

void WheelFolderRow::SlotEntered()
{
    const QString folder = QDir::fromNativeSeparators(edit->text().trimmed());
    const QString problem = Problem(folder);
    labelProblem->setText(problem);
    labelProblem->setVisible(!problem.isEmpty());
    if (problem.isEmpty() && folder != chosen) {
        chosen = folder;
        emit SigChosen(folder);
    }
}
