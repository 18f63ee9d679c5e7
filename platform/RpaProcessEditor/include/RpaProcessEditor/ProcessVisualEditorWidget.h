#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessEditor/RpaProcessEditorExport.h>

#include <QWidget>

#include <memory>

// Edits the processes of a visual app as trees of statements.
class RPAPROCESSEDITOR_EXPORT ProcessVisualEditorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessVisualEditorWidget(QWidget* parent = nullptr);
    ~ProcessVisualEditorWidget() override;

    // Shows another app; null empties the editor. Undo steps of the former app are forgotten.
    void SetRpaAppData(const RpaAppDataPtr& appData);

    // True when an enabled statement refers to a disabled one; the list is then filled with every such place.
    bool CheckComment(QList<RpaCheckInfo>& list) const;

    // Shows the main process.
    void SwitchMainPage();

signals:
    // The user asked to save (Ctrl+S).
    void SigSaveCode();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
