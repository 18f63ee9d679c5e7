// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QListWidget>
#include <QPointer>
#include <QVector>

class RpaVersionItem;

// The list in the popup of the version drop-down. Every row has its widget, but only the rows that can be
// seen are shown and placed: the stock list shows and places all of them at each opening, and each placed
// widget is compared with all its neighbours, which takes seconds with ten thousand rows.
class RpaVersionList : public QListWidget
{
    Q_OBJECT

public:
    explicit RpaVersionList(QWidget* parent = nullptr);
    ~RpaVersionList() override;

protected:
    void showEvent(QShowEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;

protected slots:
    void updateEditorGeometries() override;

private:
    using Rows = QVector<QPointer<RpaVersionItem>>;

    Rows PlaceRowsInSight();

    Rows rowsInSight;
};
