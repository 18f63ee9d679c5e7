// SPDX-License-Identifier: Apache-2.0

#include "KeysDialog.h"

#include "ui_KeysDialog.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QHeaderView>

namespace
{
// What every control does by itself.
QVector<ActEntry> CommonKeys()
{
    const QString group = QStringLiteral("到处都一样");
    const std::pair<QString, QString> keys[] = {
        {QStringLiteral("下一个 / 上一个控件"), QStringLiteral("Tab / Shift+Tab")},
        {QStringLiteral("按下当前按钮"), QStringLiteral("回车或空格")},
        {QStringLiteral("关闭对话框"), QStringLiteral("Esc")},
        {QStringLiteral("修改当前单元格或名称"), QStringLiteral("F2")},
        {QStringLiteral("移动当前行"), QStringLiteral("Alt+↑ / Alt+↓")},
        {QStringLiteral("当前项的菜单"), QStringLiteral("Shift+F10")},
    };
    QVector<ActEntry> entries;
    for (const auto& [text, key] : keys)
        entries.append({group, text, key, QString(), {}});
    return entries;
}

QTreeWidgetItem* GroupOf(QTreeWidget* list, const QString& name)
{
    const auto found = list->findItems(name, Qt::MatchExactly);
    if (!found.isEmpty())
        return found.first();
    auto* group = new QTreeWidgetItem(list, {name});
    QFont font = list->font();
    font.setBold(true);
    group->setFont(0, font);
    group->setFirstColumnSpanned(true);
    return group;
}
} // namespace

KeysDialog::KeysDialog(const QVector<ActEntry>& acts, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    Ui::KeysDialog ui;
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("KeysDialog"));
    SetTitle(QStringLiteral("快捷键一览"));
    ui.listKeys->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const ActEntry& entry : acts + CommonKeys())
        if (!entry.key.isEmpty())
            new QTreeWidgetItem(GroupOf(ui.listKeys, entry.group), {entry.text, entry.key});
    ui.listKeys->expandAll();
    ui.listKeys->setCurrentItem(ui.listKeys->topLevelItem(0));
    ui.listKeys->setFocus();
}

KeysDialog::~KeysDialog() = default;
