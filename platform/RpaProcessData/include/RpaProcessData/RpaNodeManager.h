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
    int IndexOf(const QString& id) const;

    // Appends. What comes from a foreign page is bounded: texts of 65,536 characters, at most 256 attributes,
    // their names of 128 bytes, their values of 16,384 characters. An empty or taken id is replaced by a
    // fresh one, an empty or taken name by a free one ("按钮 2"). Returns the id.
    QString AddNode(const RpaNode& node);
    void Clear();

    void WriteJson(JsonWriter& writer) const override;
    Commit ReadJson(JsonReader& reader) override;

signals:
    // Everything was replaced.
    void SigReset();
    // After each change, also that one.
    void SigChanged();

protected:
    explicit RpaNodeManager(QObject* parent);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
