#pragma once

#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

class RpaToolData;

// The tools of a UI page as its users see them: a button each, which runs the tool's process and, while that
// process runs, stops it. GUI thread only.
class RPAAPPTOOL_EXPORT IAppToolWidget : public QWidget
{
    Q_OBJECT

public:
    // Owned by the parent.
    static IAppToolWidget* CreateToolEditor(QWidget* parent);

    ~IAppToolWidget() override;

    // Shows these tools and follows their changes; null shows none. Not owned; may go away at any time.
    virtual void SetToolData(RpaToolData* data) = 0;

signals:
    // The user wants a process to be run or stopped; the text is its name.
    void SigRunProcess(const QString& processName);
    void SigStopProcess(const QString& processName);

protected:
    explicit IAppToolWidget(QWidget* parent);
};
