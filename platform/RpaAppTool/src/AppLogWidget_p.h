#pragma once

#include <RpaAppTool/IAppLogWidget.h>

#include <QPointer>

class IRpaLogDataSource;
class LogModel;
class QComboBox;
class QLineEdit;
class QTableView;
class WbLabel;

// The log with its filter bar.
class AppLogWidget : public IAppLogWidget
{
    Q_OBJECT

public:
    explicit AppLogWidget(QWidget* parent);
    ~AppLogWidget() override;

    void SetLogDataSource(IRpaLogDataSource* source) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* BuildBar();
    void BuildView();
    void FitColumns();
    void BuildHint();
    void UpdateHint();
    void ApplyFilter();
    void Copy();
    void ShowStatement(int row);

    LogModel* model;
    QTableView* view;
    WbLabel* emptyHint = nullptr;
    QComboBox* levelBox = nullptr;
    QLineEdit* filterEdit = nullptr;
    QPointer<IRpaLogDataSource> source;
    bool atEnd = true; // follows new lines while the user has not scrolled away
};
