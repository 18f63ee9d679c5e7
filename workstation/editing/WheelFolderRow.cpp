// SPDX-License-Identifier: Apache-2.0

#include "WheelFolderRow.h"

#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QDir>
#include <QFileInfo>

WheelFolderRow::WheelFolderRow(const QString& folder, QWidget* parent) : WbBaseWidget(parent), chosen(folder)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.editWheelFolder->setText(QDir::toNativeSeparators(folder));
    ui.buttonWheelFolder->setIcon(WbIcons::Get(QStringLiteral("open")));
    ui.labelProblem->hide();
    connect(ui.editWheelFolder, &QLineEdit::editingFinished, this, &WheelFolderRow::SlotEntered);
    connect(ui.editWheelFolder, &QLineEdit::textEdited, ui.labelProblem, &QWidget::hide);
    connect(ui.buttonWheelFolder, &QPushButton::clicked, this, &WheelFolderRow::SlotBrowse);
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
        ui.editWheelFolder->setText(QDir::toNativeSeparators(folder));
        SlotEntered();
    }
}

void WheelFolderRow::SlotEntered()
{
    const QString folder = QDir::fromNativeSeparators(ui.editWheelFolder->text().trimmed());
    const QString problem = Problem(folder);
    ui.labelProblem->setText(problem);
    ui.labelProblem->setVisible(!problem.isEmpty());
    if (problem.isEmpty() && folder != chosen) {
        chosen = folder;
        emit SigChosen(folder);
    }
}
