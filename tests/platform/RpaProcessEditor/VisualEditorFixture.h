// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EditorFixture.h"

#include <RpaProcessEditor/ProcessVisualEditorWidget.h>

#include <QModelIndex>

class QMimeData;
class QTreeView;

namespace EditorFixture
{
inline const QVector<RpaStatement> noStatements;

// The visual editor of an app on the screen, as its author uses it.
struct Editor
{
    explicit Editor(const QVector<RpaStatement>& statements = SomeStatements());

    template <typename Widget>
    Widget* Find(const QString& name) const
    {
        return widget.findChild<Widget*>(name);
    }

    // The editor inside the field of an argument.
    template <typename Widget>
    Widget* Field(const QString& argument) const
    {
        const QWidget* field = widget.findChild<QWidget*>(QStringLiteral("field_") + argument);
        return field ? field->findChild<Widget*>(QStringLiteral("editor")) : nullptr;
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Click(const QString& id, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int column = 1);

    // Tells whether the drop was taken.
    bool Drop(QMimeData& mime, const QPoint& place, Qt::DropAction action);

    QModelIndex IndexOf(const QString& id, int column = 1) const;
    QString Shown() const { return Outline(*Main(app)); }
    const RpaStatementNode* Node(const QString& id) const { return Main(app)->Find(id); }

    RpaAppDataPtr app;
    ProcessVisualEditorWidget widget;
    QTreeView* view = nullptr;
};
} // namespace EditorFixture
