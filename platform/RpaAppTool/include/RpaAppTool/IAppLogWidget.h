#pragma once

#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

class IRpaLogDataSource;

// The log of development runs: time, level and text of each line, filter by level and text, copy, clear. It
// follows the newest line unless the user has scrolled away. GUI thread only.
class RPAAPPTOOL_EXPORT IAppLogWidget : public QWidget
{
    Q_OBJECT

public:
    // Owned by the parent.
    static IAppLogWidget* CreateDevelopLog(QWidget* parent);

    ~IAppLogWidget() override;

    // Shows the lines of the source and those to come; null shows none. Not owned; may go away at any time.
    virtual void SetLogDataSource(IRpaLogDataSource* source) = 0;

signals:
    // The user asked for the statement that wrote a line (double click or Return).
    void SigShowStatement(const QString& statementId);

protected:
    explicit IAppLogWidget(QWidget* parent);
};
