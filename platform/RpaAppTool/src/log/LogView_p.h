// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTableView>
#include <QTimer>

class LogModel;
class WbLabel;

// The lines of a log. It follows the newest one unless the user has scrolled away. Rows are of one height, or
// as high as their texts need.
class LogView : public QTableView
{
    Q_OBJECT

public:
    explicit LogView(LogModel* model, QWidget* parent = nullptr);

    // Shows the newest line, and those to come.
    void Follow();
    void SetWraps(bool wraps);
    // Said while there are no lines.
    void SetHint(const QString& text);

signals:
    // A double click or Return.
    void SigChosen(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildHint();
    void FitScale();
    void FitColumns();
    void FitLineColumn(int first, int last);
    void FitVisibleRows();
    void ShowHint();

    LogModel* lines;
    WbLabel* hint = nullptr;
    QTimer fitting;
    bool wraps = false;
    bool atEnd = true;
    int highestLine = 0;
};
