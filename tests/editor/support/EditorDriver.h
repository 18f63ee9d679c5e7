// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QLatin1String>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class QListWidget;
class RpaAppEditorWidget;

// Uses an editor as its author does: finds its parts by their object names and works them with mouse and
// keys.
class EditorDriver
{
public:
    // A shown editor of 1280 × 720 pixels.
    EditorDriver();
    ~EditorDriver();

    RpaAppEditorWidget* GetEditor() const { return editor.get(); }
    void Destroy();

    // A part of the editor; never null, or the running test fails.
    template <typename Part = QWidget>
    Part* Find(const char* objectName) const
    {
        auto* part = AsWidget()->findChild<Part*>(QLatin1String(objectName));
        Require(part, objectName);
        return part;
    }

    void Press(const char* buttonName);

    // Names of the rows of the version drop-down, and of the selected one.
    QStringList GetVersions() const;
    QString GetSelectedVersion() const;

    // Opens the drop-down and presses the row of that name; false when there is none.
    bool PickVersion(const QString& name);
    // Opens the drop-down and presses the delete mark of that row; false when the row offers none.
    bool PressDelete(const QString& name);

    // Pages, through the navigation bar.
    void ShowPage(const char* buttonName);

    // Types at the end of the usage instructions: an edit that marks the app modified.
    void TypeInstructions(const QString& text);
    QString GetInstructions() const;

    RequestStatus GetStatus() const;

private:
    QWidget* AsWidget() const;
    static void Require(const QObject* part, const char* objectName);
    static void Click(const QWidget* part, const QPoint& place);
    QListWidget* OpenVersions();

    std::unique_ptr<RpaAppEditorWidget> editor;
};
