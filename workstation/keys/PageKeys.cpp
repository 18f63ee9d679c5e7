// SPDX-License-Identifier: Apache-2.0

#include "PageKeys.h"

#include "MainWindow.h"

#include <QAbstractButton>
#include <QLineEdit>

namespace
{
constexpr const char* listTabs[] = {"tabMine", "tabOnline", "tabGray"};
constexpr int listCount = 3;
} // namespace

void PageKeys::BindTo(KeyActs* acts) const
{
    BindLists(acts);
    BindButton(acts, KeyAct::Back, "buttonBack");
    BindButton(acts, KeyAct::Settings, "buttonSettings");
    BindButton(acts, KeyAct::Packages, "buttonPackages");
    BindButton(acts, KeyAct::ShowVersions, "buttonVersions");
    BindButton(acts, KeyAct::ShowRuns, "buttonRuns");
}

void PageKeys::BindLists(KeyActs* acts) const
{
    BindButton(acts, KeyAct::ListMine, listTabs[0]);
    BindButton(acts, KeyAct::ListOnline, listTabs[1]);
    BindButton(acts, KeyAct::ListGray, listTabs[2]);
    BindButton(acts, KeyAct::NewVisual, "buttonNewVisual");
    BindButton(acts, KeyAct::NewProgram, "buttonNewProgram");
    BindButton(acts, KeyAct::RefreshApps, "buttonRefresh");
    const auto always = [] { return QString(); };
    acts->Bind(KeyAct::ListNext, always, [this] { ShowList(1); });
    acts->Bind(KeyAct::ListPrevious, always, [this] { ShowList(listCount - 1); });
    acts->Bind(KeyAct::SearchApps, always, [this] {
        auto* search = window->CurrentPage()->findChild<QLineEdit*>(QStringLiteral("editSearch"));
        search->setFocus(Qt::ShortcutFocusReason);
        search->selectAll();
    });
}

void PageKeys::BindButton(KeyActs* acts, KeyAct act, const char* name) const
{
    acts->Bind(
        act,
        [this, name] {
            const QAbstractButton* const button = Button(name);
            if (!button)
                return QStringLiteral("不在这一页");
            return button->isEnabled() ? QString() : QStringLiteral("请等待应用列表读取完成");
        },
        [this, name] { Button(name)->click(); });
}

QAbstractButton* PageKeys::Button(const char* name) const
{
    const auto buttons = window->findChildren<QAbstractButton*>(QLatin1String(name));
    for (QAbstractButton* button : buttons)
        if (button->isVisible())
            return button;
    return nullptr;
}

void PageKeys::ShowList(int by) const
{
    for (int index = 0; index < listCount; ++index) {
        const QAbstractButton* const tab = Button(listTabs[index]);
        if (tab && tab->isChecked()) {
            Button(listTabs[(index + by) % listCount])->click();
            return;
        }
    }
}
