// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

class IRpaLogDataSource;

// The log of development runs: place, time, level and text of each line, filter by level and text, copy,
// save, clear. It follows the newest line unless the user has scrolled away, takes the whole page (the next
// WbBaseWidget around it) or a window of its own when the user wants it to, and comes back. GUI thread only.
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
    // The same for a line of a program text, from 1.
    void SigShowLine(int line);
    // The user asked how the run failed that wrote an error. Offered on lines of errors, when somebody listens.
    void SigShowFailure();

protected:
    explicit IAppLogWidget(QWidget* parent);
};
