#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessEditor/RpaProcessEditorExport.h>

#include <QWidget>

#include <memory>

// Edits the program text of a program app: the text of its main process. Every change is written into the app
// at once and marks it modified. GUI thread only.
class RPAPROCESSEDITOR_EXPORT ProcessProgramEditorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessProgramEditorWidget(QWidget* parent = nullptr);
    ~ProcessProgramEditorWidget() override;

    // Name and version of the library that colours the program text; empty when the editor does it itself.
    static QString GetHighlighterName();

    // Shows another app; null empties the editor. Undo steps of the former app are forgotten; the same app
    // given again keeps them.
    void SetRpaAppData(const RpaAppDataPtr& appData);

signals:
    // The user asked to save (Ctrl+S).
    void SigSaveCode();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
