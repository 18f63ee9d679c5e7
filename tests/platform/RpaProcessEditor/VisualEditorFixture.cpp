// SPDX-License-Identifier: Apache-2.0

#include "VisualEditorFixture.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QTreeView>

namespace EditorFixture
{
Editor::Editor(const QVector<RpaStatement>& statements) : app(App(statements))
{
    widget.resize(1280, 640);
    widget.SetRpaAppData(app);
    widget.show();
    widget.activateWindow();
    if (!QTest::qWaitForWindowActive(&widget))
        QTest::qFail("the window never became active", __FILE__, __LINE__);
    view = widget.findChild<QTreeView*>(QStringLiteral("statementView"));
    view->setFocus();
}

void Editor::Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(view, key, modifiers);
}

void Editor::Click(const QString& id, Qt::KeyboardModifiers modifiers, int column)
{
    view->scrollTo(IndexOf(id));
    const QRect rect = view->visualRect(IndexOf(id, column));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, rect.center());
}

bool Editor::Drop(QMimeData& mime, const QPoint& place, Qt::DropAction action)
{
    QDragEnterEvent enter(place, action, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view->viewport(), &enter);
    QDragMoveEvent move(place, action, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view->viewport(), &move);
    QDropEvent drop(place, action, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view->viewport(), &drop);
    return drop.isAccepted();
}

QModelIndex Editor::IndexOf(const QString& id, int column) const
{
    const QModelIndexList found = view->model()->match(view->model()->index(0, 1), Qt::UserRole, id, 1,
                                                       Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.first().siblingAtColumn(column);
}
} // namespace EditorFixture
