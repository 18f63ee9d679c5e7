// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLayout>
#include <QList>

// Puts widgets side by side and goes on in the next line when there is no room.
class FlowLayout : public QLayout
{
    Q_OBJECT

public:
    FlowLayout(QWidget* parent, int spacing);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override { items << item; }
    int count() const override { return items.size(); }
    QLayoutItem* itemAt(int index) const override { return items.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return Arrange(QRect(0, 0, width, 0), false); }
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    int Arrange(const QRect& rect, bool apply) const;

    QList<QLayoutItem*> items;
};
