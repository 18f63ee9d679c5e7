// SPDX-License-Identifier: Apache-2.0

#include "ValueModel_p.h"

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbTheme.h>

#include <QFont>

ValueModel::ValueModel(DebugSource* debugged, QObject* parent)
    : QAbstractItemModel(parent), source(debugged), top(std::make_unique<Node>())
{
    connect(source, &DebugSource::SigAnswer, this, &ValueModel::SlotAnswer);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, [this] {
        if (rowCount() > 0)
            emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1), {Qt::ForegroundRole});
    });
}

ValueModel::~ValueModel() = default;

void ValueModel::SetRoots(const QVector<RpaDebugValue>& roots, int shownFrame)
{
    beginResetModel();
    questions.clear();
    frame = shownFrame;
    top = std::make_unique<Node>();
    for (const RpaDebugValue& value : roots)
        top->children.push_back(Make(*top, value));
    endResetModel();
}

void ValueModel::SetRoot(int row, const RpaDebugValue& value)
{
    if (row < 0 || row >= rowCount())
        return;
    Node& node = *top->children.at(size_t(row));
    for (auto it = questions.begin(); it != questions.end();)
        it = IsInside(*it->node, node) ? questions.erase(it) : std::next(it);
    if (!node.children.empty()) {
        beginRemoveRows(IndexOf(node, 0), 0, int(node.children.size()) - 1);
        node.children.clear();
        endRemoveRows();
    }
    node.asked = false;
    node.value = value;
    Repaint(node);
}

std::unique_ptr<ValueModel::Node> ValueModel::Make(Node& parent, const RpaDebugValue& value)
{
    auto node = std::make_unique<Node>();
    node->value = value;
    node->parent = &parent;
    node->row = int(parent.children.size());
    return node;
}

bool ValueModel::IsInside(const Node& node, const Node& root)
{
    const Node* each = &node;
    while (each && each != &root)
        each = each->parent;
    return each;
}

void ValueModel::Ask(Node& node, int first)
{
    const int request = source->AskChildren(node.value.handle, first, RpaDebugSession::entriesPerPage);
    if (request == 0)
        return;
    node.asked = true;
    questions.insert(request, {&node, false});
}

void ValueModel::LoadMore(const QModelIndex& index)
{
    const Node* more = index.isValid() ? NodeOf(index) : nullptr;
    if (more && more->isMore && !more->parent->asked)
        Ask(*more->parent, int(more->parent->children.size()) - 1);
}

void ValueModel::SlotAnswer(const RpaDebugAnswer& answer)
{
    const auto found = questions.constFind(answer.request);
    if (found == questions.constEnd())
        return;
    const Question question = *found;
    questions.erase(found);
    if (question.sets)
        TakeValue(*question.node, answer);
    else
        TakeChildren(*question.node, answer);
}

void ValueModel::TakeValue(Node& node, const RpaDebugAnswer& answer)
{
    if (!answer.ok) {
        emit SigRefused(node.value.name, answer.error);
        return;
    }
    emit SigValueSet();
}

void ValueModel::TakeChildren(Node& node, const RpaDebugAnswer& answer)
{
    node.asked = false;
    if (!answer.ok) {
        emit SigRefused(node.value.name, answer.error);
        return;
    }
    RemoveMore(node);
    Append(node, answer.values, answer.total);
}

void ValueModel::RemoveMore(Node& node)
{
    if (node.children.empty() || !node.children.back()->isMore)
        return;
    const int last = int(node.children.size()) - 1;
    beginRemoveRows(IndexOf(node, 0), last, last);
    node.children.pop_back();
    endRemoveRows();
}

void ValueModel::Append(Node& node, const QVector<RpaDebugValue>& values, int total)
{
    const int before = int(node.children.size());
    // An empty page ends it, whatever the total says: else it would be asked for again and again.
    const int left = values.isEmpty() ? 0 : total - before - values.size();
    const int rows = values.size() + (left > 0 ? 1 : 0);
    if (rows == 0) {
        node.value.inside = before;
        Repaint(node);
        return;
    }
    beginInsertRows(IndexOf(node, 0), before, before + rows - 1);
    for (const RpaDebugValue& value : values)
        node.children.push_back(Make(node, value));
    if (left > 0) {
        RpaDebugValue more;
        more.name = QStringLiteral("还有 %1 项…").arg(left);
        node.children.push_back(Make(node, more));
        node.children.back()->isMore = true;
    }
    endInsertRows();
}

ValueModel::Node* ValueModel::NodeOf(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : top.get();
}

QModelIndex ValueModel::IndexOf(const Node& node, int column) const
{
    return node.parent ? createIndex(node.row, column, const_cast<Node*>(&node)) : QModelIndex();
}

void ValueModel::Repaint(const Node& node)
{
    emit dataChanged(IndexOf(node, 0), IndexOf(node, ColumnCount - 1));
}

QModelIndex ValueModel::index(int row, int column, const QModelIndex& parent) const
{
    const Node* node = NodeOf(parent);
    if (row < 0 || row >= rowCount(parent) || column < 0 || column >= ColumnCount)
        return QModelIndex();
    return IndexOf(*node->children.at(size_t(row)), column);
}

QModelIndex ValueModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? IndexOf(*NodeOf(child)->parent, 0) : QModelIndex();
}

int ValueModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : int(NodeOf(parent)->children.size());
}

bool ValueModel::hasChildren(const QModelIndex& parent) const
{
    if (!parent.isValid() || parent.column() > 0)
        return rowCount(parent) > 0;
    const RpaDebugValue& value = NodeOf(parent)->value;
    return rowCount(parent) > 0 || (value.handle > 0 && value.inside > 0);
}

bool ValueModel::canFetchMore(const QModelIndex& parent) const
{
    return parent.isValid() && rowCount(parent) == 0 && hasChildren(parent) && !NodeOf(parent)->asked;
}

void ValueModel::fetchMore(const QModelIndex& parent)
{
    if (canFetchMore(parent))
        Ask(*NodeOf(parent), 0);
}

QString ValueModel::Text(const Node& node, int column)
{
    const RpaDebugValue& value = node.value;
    switch (column) {
    case NameColumn:
        return value.name;
    case ValueColumn:
        return value.error.isEmpty() ? value.text : value.error;
    case TypeColumn:
        return value.type;
    default:
        return value.size < 0 ? QString() : QString::number(value.size);
    }
}

QString ValueModel::AccessibleText(const Node& node, int column)
{
    const QString text = Text(node, column);
    return node.value.changed && column == ValueColumn ? text + QStringLiteral("，已改变") : text;
}

QVariant ValueModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Node& node = *NodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return Text(node, index.column());
    case Qt::ToolTipRole:
        return UIUtils::PlainToolTip(Text(node, index.column()));
    case Qt::AccessibleTextRole:
        return AccessibleText(node, index.column());
    case Qt::ForegroundRole:
        if (!node.value.error.isEmpty() && index.column() == ValueColumn)
            return WbTheme::Instance()->Color(WbColor::DangerText);
        return node.value.changed ? WbTheme::Instance()->Color(WbColor::WarningText) : QVariant();
    case ChangedRole:
        return node.value.changed;
    case MoreRole:
        return node.isMore;
    case HandleRole:
        return node.value.handle;
    default:
        return QVariant();
    }
}

QVariant ValueModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case NameColumn:
        return QStringLiteral("名称");
    case ValueColumn:
        return QStringLiteral("值");
    case TypeColumn:
        return QStringLiteral("类型");
    default:
        return QStringLiteral("大小");
    }
}

Qt::ItemFlags ValueModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const bool editable = index.column() == ValueColumn && NodeOf(index)->value.settable;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return editable ? flags | Qt::ItemIsEditable : flags;
}

bool ValueModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QString expression = value.toString().trimmed();
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable) || expression.isEmpty())
        return false;
    Node* node = NodeOf(index);
    if (expression == node->value.text)
        return false; // left as it was; a shortened text is no value
    const int request = source->SetValue(frame, node->parent->value.handle, node->value, expression);
    if (request > 0)
        questions.insert(request, {node, true});
    return request > 0;
}
