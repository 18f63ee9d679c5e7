// SPDX-License-Identifier: Apache-2.0

#include "PlaceTexts_p.h"
#include "ProcessNameDialog_p.h"
#include "ProcessTabs_p.h"

#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTabBar.h>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QToolButton>

ProcessTabs::ProcessTabs(QWidget* parent)
    : QWidget(parent), bar(new WbTabBar),
      addButton(UIUtils::IconButton(QStringLiteral("processAddButton"), QStringLiteral("add"),
                                    QStringLiteral("新建流程")))
{
    setObjectName(QStringLiteral("processTabs"));
    bar->setObjectName(QStringLiteral("processTabBar"));
    bar->setAccessibleName(QStringLiteral("流程"));
    bar->setMovable(true);
    bar->setContextMenuPolicy(Qt::CustomContextMenu);
    bar->installEventFilter(this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(2);
    layout->addWidget(bar);
    layout->addWidget(addButton);
    layout->addStretch();

    connect(bar, &QTabBar::currentChanged, this, [this] {
        if (!refilling)
            Refill(Current());
    });
    connect(bar, &QTabBar::tabMoved, this, &ProcessTabs::SlotMoved);
    connect(bar, &QTabBar::tabBarDoubleClicked, this, &ProcessTabs::AskRename);
    connect(bar, &QTabBar::customContextMenuRequested, this, &ProcessTabs::ShowMenu);
    connect(addButton, &QToolButton::clicked, this, &ProcessTabs::AskAdd);
}

void ProcessTabs::SetEdits(ProcessEdits* processEdits)
{
    if (edits)
        edits->Manager()->disconnect(this);
    edits = processEdits;
    addButton->setEnabled(edits);
    announced.clear();
    if (edits) {
        ProcessDataManager* manager = edits->Manager();
        const auto refill = [this] { Refill(Current()); };
        connect(manager, &ProcessDataManager::SigProcessAdded, this, refill);
        connect(manager, &ProcessDataManager::SigProcessRemoved, this, refill);
        connect(manager, &ProcessDataManager::SigProcessMoved, this, refill);
        connect(manager, &ProcessDataManager::SigReset, this, refill);
        connect(manager, &ProcessDataManager::SigProcessRenamed, this,
                [this](int index, const QString& oldName) {
                    const QString current =
                        Current() == oldName ? edits->Manager()->GetProcess(index)->GetName() : Current();
                    Refill(current);
                });
    }
    Refill(edits ? edits->Manager()->GetProcessNameFirst() : QString());
}

void ProcessTabs::Refill(const QString& current)
{
    const QStringList names = edits ? edits->Manager()->GetProcessNames() : QStringList();
    refilling = true;
    while (bar->count() > names.size())
        bar->removeTab(bar->count() - 1);
    for (int i = 0; i < names.size(); ++i) {
        if (i == bar->count())
            bar->addTab(QString());
        QString shown = names.at(i);
        bar->setTabText(i, shown.replace(QLatin1Char('&'), QLatin1String("&&")));
        bar->setTabData(i, names.at(i));
        bar->setTabToolTip(i, i == 0 ? QStringLiteral("主流程：从这里开始运行；双击重命名")
                                     : QStringLiteral("双击重命名，右键更多操作"));
        bar->setTabIcon(i, i == 0 ? WbIcons::Get(QStringLiteral("dot"), WbColor::Accent) : QIcon());
    }
    bar->setCurrentIndex(qMax(0, names.indexOf(current)));
    refilling = false;
    if (Current() != announced) {
        announced = Current();
        emit SigCurrentChanged(announced);
    }
}

QString ProcessTabs::NameAt(int index) const
{
    return bar->tabData(index).toString();
}

QString ProcessTabs::Current() const
{
    return NameAt(bar->currentIndex());
}

void ProcessTabs::AskAdd()
{
    if (!edits)
        return;
    const QString proposal = edits->Manager()->MakeFreeName(QStringLiteral("流程"));
    const QString name = AskName(QStringLiteral("新建流程"), proposal, edits->Manager()->GetProcessNames());
    if (!name.isEmpty())
        edits->AddProcess(name);
}

void ProcessTabs::AskRename(int index)
{
    const QString name = NameAt(index);
    if (!edits || name.isEmpty())
        return;
    QStringList taken = edits->Manager()->GetProcessNames();
    taken.removeOne(name);
    const QString newName = AskName(QStringLiteral("重命名流程"), name, taken, true);
    if (!newName.isEmpty())
        edits->RenameProcess(name, newName);
}

// Empty when there is none, or nobody left to take it: the editor may be closed, or shown another app, while
// the dialog is open.
QString ProcessTabs::AskName(const QString& title, const QString& proposal, const QStringList& taken,
                             bool renames)
{
    const QPointer<ProcessTabs> self(this);
    const QPointer<ProcessEdits> asked = edits;
    const QPointer<ProcessNameDialog> dialog = new ProcessNameDialog(title, proposal, taken, this);
    if (renames)
        dialog->ShowFollowers([asked, proposal](const QString& name) {
            return asked ? PlaceTexts::OfProcess(*asked->App(), proposal, name) : QVector<ShownPlace>();
        });
    const bool accepted = dialog->exec() == QDialog::Accepted;
    QString name = accepted && dialog && self && asked && edits == asked ? dialog->Name() : QString();
    delete dialog;
    return name;
}

void ProcessTabs::AskRemove(int index)
{
    const QString name = NameAt(index);
    if (!edits || name.isEmpty() || edits->Manager()->GetCount() < 2)
        return;
    const QString text =
        index == 0 ? QStringLiteral("“%1”是主流程，删除后下一个流程成为主流程。确定删除吗？").arg(name)
                   : QStringLiteral("确定删除流程“%1”吗？").arg(name);
    const QPointer<ProcessTabs> self(this);
    const QPointer<ProcessEdits> asked = edits;
    const int answer = PackagedMsgBox::question(
        text, this, QMessageBox::StandardButtons(QMessageBox::Ok | QMessageBox::Cancel));
    if (self && answer == QMessageBox::Ok && asked && edits == asked)
        edits->RemoveProcess(name);
}

void ProcessTabs::SlotMoved(int from, int to)
{
    if (refilling || !edits)
        return;
    // The bar has moved already; the step moves the model, or the bar goes back.
    const QString current = Current();
    if (from == 0 || to == 0)
        Refill(current); // which process is the main one does not change by an accident of the mouse
    else
        edits->MoveProcess(from, to);
}

void ProcessTabs::ShowMenu(const QPoint& position)
{
    const int index = bar->tabAt(position);
    if (index < 0)
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("重命名…"), this, [this, index] { AskRename(index); });
    QAction* main = menu->addAction(QStringLiteral("设为主流程"), this, [this, index] {
        if (edits)
            edits->MoveProcess(index, 0);
    });
    main->setEnabled(index > 0);
    menu->addSeparator();
    QAction* remove = menu->addAction(QStringLiteral("删除"), this, [this, index] { AskRemove(index); });
    remove->setEnabled(edits && edits->Manager()->GetCount() > 1);
    menu->popup(bar->mapToGlobal(position));
}

bool ProcessTabs::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == bar && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_F2) {
            AskRename(bar->currentIndex());
            return true;
        }
        if (key == Qt::Key_Delete) {
            AskRemove(bar->currentIndex());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
