// SPDX-License-Identifier: Apache-2.0

#include "BookmarkActs_p.h"
#include "BookmarkFile_p.h"
#include "StatementView_p.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <WbBaseUI/WbToast.h>

#include <QAction>

#include <algorithm>

namespace
{
// Nobody finds the way among more; the oldest go.
constexpr int bookmarksAtMost = 1000;
} // namespace

BookmarkActs::BookmarkActs(StatementView* statementView) : QObject(statementView), view(statementView)
{
    Add(QStringLiteral("actionBookmark"), QStringLiteral("设置 / 取消书签"), Qt::CTRL + Qt::Key_B,
        &BookmarkActs::Toggle);
    Add(QStringLiteral("actionBookmarkNext"), QStringLiteral("下一个书签"), Qt::Key_F4,
        &BookmarkActs::GoNext);
    Add(QStringLiteral("actionBookmarkPrevious"), QStringLiteral("上一个书签"), Qt::SHIFT + Qt::Key_F4,
        &BookmarkActs::GoPrevious);
    actions.first()->setProperty("whyNot", QStringLiteral("先选择语句")); // where all acts are listed
    Update();
}

void BookmarkActs::Add(const QString& name, const QString& text, int key, void (BookmarkActs::*act)())
{
    auto* action = new QAction(text, view);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(key));
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    connect(action, &QAction::triggered, this, act);
    actions.append(action);
}

void BookmarkActs::SetApp(const RpaAppDataPtr& appData)
{
    app = appData.data();
    ids = app ? BookmarkFile::Read(app->GetRunTimeInfo()->GetAppId()) : QStringList();
    view->Statements()->SetBookmarks(ids);
}

void BookmarkActs::Update()
{
    actions.first()->setEnabled(view->selectionModel()->hasSelection());
}

// All get one, unless all have one.
void BookmarkActs::Toggle()
{
    const QStringList selected = view->SelectedIds();
    if (!app || selected.isEmpty())
        return;
    const bool removes =
        std::all_of(selected.begin(), selected.end(), [this](const QString& id) { return ids.contains(id); });
    for (const QString& id : selected)
        ids.removeOne(id);
    if (!removes)
        ids += selected;
    ids = ids.mid(qMax(0, ids.size() - bookmarksAtMost));
    BookmarkFile::Write(app->GetRunTimeInfo()->GetAppId(), ids);
    view->Statements()->SetBookmarks(ids);
}

QVector<BookmarkActs::Place> BookmarkActs::PlacesWithCurrent(int& at) const
{
    QVector<Place> places;
    const RpaStatementNode* current = view->Statements()->NodeOf(view->currentIndex());
    const QSet<QString> marked(ids.begin(), ids.end());
    const ProcessDataManager* processes = app->GetProcessDataManager();
    for (int i = 0; i < processes->GetCount(); ++i) {
        const RpaProcess* process = processes->GetProcess(i);
        if (current == process->GetRoot()) {
            at = places.size();
            places.append({process->GetName(), QString()}); // an empty process: from there on
        }
        process->ForEach([&](const RpaStatementNode& node) {
            if (&node == current)
                at = places.size();
            if (&node == current || marked.contains(node.GetId()))
                places.append({process->GetName(), node.GetId()});
        });
    }
    return places;
}

void BookmarkActs::Go(int direction)
{
    if (!app)
        return;
    int at = 0;
    const QVector<Place> places = PlacesWithCurrent(at);
    for (int i = 1; i <= places.size(); ++i) {
        const Place& place = places.at((at + direction * i + places.size() * 2) % places.size());
        if (!ids.contains(place.statementId))
            continue;
        emit SigPlaceChosen(place.processName, place.statementId);
        return;
    }
    WbToast::Show(QStringLiteral("还没有书签，按 Ctrl+B 设置"), ToastInformation);
}
