// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugSource_p.h"

#include <QAbstractItemModel>
#include <QHash>

#include <memory>
#include <vector>

// Values of a stopped program as a tree. What is inside of a value is asked for when somebody looks at it, a
// page at a time; the row behind a page that is not the last one asks for the next. Answers to questions of
// an earlier stop, and second answers, are passed over.
class ValueModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        NameColumn,
        ValueColumn,
        TypeColumn,
        SizeColumn,
        ColumnCount
    };

    enum Role
    {
        ChangedRole = Qt::UserRole, // since the stop before
        MoreRole,                   // the row that asks for more
        HandleRole,
    };

    explicit ValueModel(DebugSource* debugged, QObject* parent = nullptr);
    ~ValueModel() override;

    // Forgets all questions. The frame is the one in which values are set.
    void SetRoots(const QVector<RpaDebugValue>& roots, int frame);
    // Another value in the place of a root.
    void SetRoot(int row, const RpaDebugValue& value);
    // Does nothing for a row that does not ask for more, or has asked.
    void LoadMore(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& = QModelIndex()) const override { return ColumnCount; }
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Takes a Python expression; true when it was asked for, see SigValueSet() and SigRefused().
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    void SigValueSet();
    void SigRefused(const QString& name, const QString& why);

private:
    struct Node
    {
        RpaDebugValue value;
        Node* parent = nullptr;
        std::vector<std::unique_ptr<Node>> children;
        int row = 0;
        bool asked = false;  // for its children, and no answer yet
        bool isMore = false; // asks for more children of its parent
    };
    struct Question
    {
        Node* node;
        bool sets;
    };

    void SlotAnswer(const RpaDebugAnswer& answer);
    void TakeChildren(Node& node, const RpaDebugAnswer& answer);
    void TakeValue(Node& node, const RpaDebugAnswer& answer);
    void Append(Node& node, const QVector<RpaDebugValue>& values, int total);
    void RemoveMore(Node& node);
    void Ask(Node& node, int first);
    Node* NodeOf(const QModelIndex& index) const;
    QModelIndex IndexOf(const Node& node, int column) const;
    static std::unique_ptr<Node> Make(Node& parent, const RpaDebugValue& value);
    static bool IsInside(const Node& node, const Node& root);
    static QString Text(const Node& node, int column);
    static QString AccessibleText(const Node& node, int column);
    void Repaint(const Node& node);

    DebugSource* const source;
    std::unique_ptr<Node> top;
    QHash<int, Question> questions; // by number, of this stop
    int frame = 0;
};
