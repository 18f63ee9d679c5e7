// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/IAppLogWidget.h>

#include <QPointer>

class IRpaLogDataSource;
class LogModel;
class LogPlace;
class LogView;
class QAction;
class QComboBox;
class QHBoxLayout;
class QLineEdit;
class QToolButton;

// The log with its filter bar.
class AppLogWidget : public IAppLogWidget
{
    Q_OBJECT

public:
    explicit AppLogWidget(QWidget* parent);

    void SetLogDataSource(IRpaLogDataSource* source) override;

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    void BuildFilter();
    void BuildActions();
    void BuildSaving();
    QAction* Add(const char* name, const QString& text, const char* icon);
    QToolButton* AddButton(const char* name, QAction* action);
    void UpdatePlaceActions();
    void UpdateHint();
    void ApplyFilter();
    void Clear();
    void Copy();
    void Save(bool filteredOnly);
    void ShowPlace(int row);
    void OfferFailure(int row);

    LogModel* model;
    LogView* view;
    LogPlace* place;
    QHBoxLayout* barLayout = nullptr;
    QComboBox* levelBox = nullptr;
    QLineEdit* filterEdit = nullptr;
    QAction* showPlace = nullptr;
    QAction* showFailure = nullptr;
    QAction* wrap = nullptr;
    QAction* detach = nullptr;
    QAction* enlarge = nullptr;
    QAction* back = nullptr;
    QPointer<IRpaLogDataSource> source;
};
