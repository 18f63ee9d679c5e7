// SPDX-License-Identifier: Apache-2.0

#include "TabStrip_p.h"

#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/RpaTabBar.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbToast.h>

#include <QHBoxLayout>
#include <QMenu>
#include <QPointer>
#include <QSignalBlocker>
#include <QToolButton>

namespace
{
constexpr int tabBarGap = 8; // to what stands above, as in the style sheet
constexpr int tabBarHeight = 36;
constexpr int tabIconSize = 16;
constexpr int addButtonSide = 28;
} // namespace

class RpaTabBar::Private : public IDpiAdapter
{
public:
    explicit Private(RpaTabBar* bar)
        : q(bar), strip(new TabStrip(bar)),
          buttonAdd(UIUtils::IconButton(QStringLiteral("buttonAddTab"), QStringLiteral("add"),
                                        QStringLiteral("新建"))),
          layout(new QHBoxLayout(bar))
    {
        buttonAdd->setAccessibleName(QStringLiteral("新建标签页"));
        layout->addWidget(strip);
        layout->addWidget(buttonAdd);
        layout->addStretch(1);
        AdjustForDpi();
        DpiTool::Register(this);
    }

    ~Private() override { DpiTool::Unregister(this); }

    void AdjustForDpi() override
    {
        layout->setContentsMargins(DpiTool::ScaleDefault(4), DpiTool::ScaleDefault(tabBarGap),
                                   DpiTool::ScaleDefault(4), 0);
        layout->setSpacing(DpiTool::ScaleDefault(4));
        strip->setFixedHeight(DpiTool::ScaleDefault(tabBarHeight));
        const int icon = DpiTool::ScaleDefault(tabIconSize);
        const int button = DpiTool::ScaleDefault(addButtonSide);
        buttonAdd->setIconSize({icon, icon});
        buttonAdd->setFixedSize(button, button);
    }

    void AskToDelete(int index)
    {
        if (strip->count() <= 1) {
            WbToast::Show(QStringLiteral("至少保留一个标签页"), ToastWarning);
            return;
        }
        const QString question = QStringLiteral("确定删除“%1”吗？").arg(strip->tabText(index));
        const QPointer<RpaTabBar> guard(q);
        const int answer = PackagedMsgBox::question(question, q, QMessageBox::Yes | QMessageBox::No);
        if (guard && answer == QMessageBox::Yes && index < strip->count())
            emit q->SigDeleteTab(index);
    }

    void ShowMenu(int index, const QPoint& position)
    {
        // The bar takes it along.
        const QPointer<QMenu> menu = new QMenu(q);
        menu->setObjectName(QStringLiteral("tabMenu"));
        const auto add = [&menu](const QString& icon, const QString& text, const QString& name,
                                 bool enabled) {
            QAction* action = menu->addAction(WbIcons::Get(icon), text);
            action->setObjectName(name);
            action->setEnabled(enabled);
            return action;
        };
        const bool onTab = index >= 0;
        const QAction* create =
            add(QStringLiteral("add"), QStringLiteral("新建"), QStringLiteral("actionAdd"), true);
        menu->addSeparator();
        const QAction* rename = add(QStringLiteral("rename"), QStringLiteral("重命名\tF2"),
                                    QStringLiteral("actionRename"), onTab);
        const QAction* left = add(QStringLiteral("chevron-left"), QStringLiteral("左移\tCtrl+Shift+PageUp"),
                                  QStringLiteral("actionMoveLeft"), index > 0);
        const QAction* right =
            add(QStringLiteral("chevron-right"), QStringLiteral("右移\tCtrl+Shift+PageDown"),
                QStringLiteral("actionMoveRight"), onTab && index + 1 < strip->count());
        menu->addSeparator();
        const QAction* remove = add(QStringLiteral("delete"), QStringLiteral("删除\tDelete"),
                                    QStringLiteral("actionDelete"), onTab && strip->count() > 1);

        const QAction* chosen = menu->exec(position);
        if (!menu)
            return;
        menu->deleteLater(); // not yet: its actions are compared
        if (!chosen)
            return;
        if (chosen == create)
            emit q->SigAddTab();
        else if (chosen == rename)
            emit q->SigRenameTab(index);
        else if (chosen == left)
            emit q->SigTabMoved(index, index - 1);
        else if (chosen == right)
            emit q->SigTabMoved(index, index + 1);
        else if (chosen == remove)
            AskToDelete(index);
    }

    RpaTabBar* const q;
    TabStrip* const strip;
    QToolButton* const buttonAdd;
    QHBoxLayout* const layout;
};

RpaTabBar::RpaTabBar(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(this))
{
    setAttribute(Qt::WA_StyledBackground);
    setFocusProxy(d->strip);
    connect(d->buttonAdd, &QToolButton::clicked, this, &RpaTabBar::SigAddTab);
    connect(d->strip, &TabStrip::currentChanged, this, [this](int index) {
        if (index >= 0)
            emit SigTabChanged(index);
    });
    connect(d->strip, &TabStrip::SigRename, this, &RpaTabBar::SigRenameTab);
    connect(d->strip, &TabStrip::SigMove, this, &RpaTabBar::SigTabMoved);
    connect(d->strip, &TabStrip::SigDelete, this, [this](int index) { d->AskToDelete(index); });
    connect(d->strip, &TabStrip::SigMenu, this,
            [this](int index, const QPoint& position) { d->ShowMenu(index, position); });
}

RpaTabBar::~RpaTabBar() = default;

void RpaTabBar::Initialize(const QStringList& names)
{
    const QSignalBlocker blocker(d->strip);
    while (d->strip->count() > 0)
        d->strip->removeTab(d->strip->count() - 1);
    for (const QString& name : names)
        d->strip->AppendTab(name);
    d->strip->setCurrentIndex(names.isEmpty() ? -1 : 0);
}

void RpaTabBar::AddTab(const QString& name)
{
    int index = -1;
    {
        // The first tab becomes current inside addTab(), before it has its identity.
        const QSignalBlocker blocker(d->strip);
        index = d->strip->AppendTab(name);
        d->strip->setCurrentIndex(index);
    }
    emit SigTabChanged(index);
}

void RpaTabBar::RemoveTab(int index)
{
    if (index < 0 || index >= d->strip->count())
        return;
    if (index == d->strip->currentIndex() && d->strip->count() > 1) {
        const bool last = index == d->strip->count() - 1;
        d->strip->setCurrentIndex(last ? index - 1 : index + 1);
    }
    const QSignalBlocker blocker(d->strip);
    d->strip->removeTab(index);
}

void RpaTabBar::SetTabText(int index, const QString& name)
{
    d->strip->setTabText(index, name);
}

void RpaTabBar::SwapTab(int from, int to)
{
    const QSignalBlocker blocker(d->strip);
    d->strip->Swap(from, to);
}

int RpaTabBar::GetCurrentIndex() const
{
    return d->strip->currentIndex();
}
