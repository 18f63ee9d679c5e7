// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSet>
#include <QTreeView>

// A tree of values. What the author has opened is open again at the next stop.
class ValueView : public QTreeView
{
    Q_OBJECT

public:
    explicit ValueView(QWidget* parent = nullptr);

    // Open from the start, without a click.
    void OpenAtFirst(const QString& name);
    void setModel(QAbstractItemModel* shown) override;
    void reset() override;

signals:
    // The row that asks for more.
    void SigMoreAsked(const QModelIndex& index);

protected:
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static QString PathOf(const QModelIndex& index);
    void OpenAgain(const QModelIndex& parent, int first, int last);
    void Activate(const QModelIndex& index);

    QSet<QString> opened;
};
