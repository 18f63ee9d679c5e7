// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaNode.h>
#include <WbFoundation/IJsonParser.h>

#include <QVector>

#include <memory>

// Common base of the element stores of an app: an ordered list of captured elements. GUI thread only.
class RPAPROCESSDATA_EXPORT RpaNodeManager : public IJsonParser
{
    Q_OBJECT

public:
    ~RpaNodeManager() override;

    // How many there are, and all of them in order.
    int GetCount() const;
    QVector<RpaNode> GetNodes() const;
    // A node with an empty id outside 0 … GetCount() - 1 / when there is none.
    RpaNode GetNode(int index) const;
    RpaNode FindNode(const QString& id) const;
    RpaNode FindNodeByName(const QString& name) const;
    int IndexOf(const QString& id) const;

    // Appends. What comes from a foreign page is bounded: texts of 65,536 characters, at most 256 attributes,
    // their names of 128 bytes, their values of 16,384 characters. An empty or taken id is replaced by a
    // fresh one, an empty or taken name by a free one ("按钮 2"). Returns the id.
    QString AddNode(const RpaNode& node);
    // Replaces the node of the same id. False when there is none, or its name is empty or taken by another.
    bool UpdateNode(const RpaNode& node);
    bool RemoveNode(const QString& id);
    void Clear();

    void WriteJson(JsonWriter& writer) const override;
    Commit ReadJson(JsonReader& reader) override;

signals:
    // After the change; a removed one is gone by its index already. SigReset: everything was replaced.
    void SigNodeAdded(int index);
    void SigNodeChanged(int index);
    void SigNodeRemoved(int index, const QString& id);
    void SigReset();
    // After each of the above.
    void SigChanged();

protected:
    explicit RpaNodeManager(QObject* parent);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
