// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QString>
#include <QVector>

#include <functional>

// One line of the about box.
struct BuildFact
{
    QString name;
    QString value;
};

// What this workstation is and what it was built with, each fact from the library or program concerned.
// Server and Python are asked when this is made; SigChanged tells that their answer has come.
class BuildInfo : public QObject
{
    Q_OBJECT

public:
    explicit BuildInfo(const QString& serverProgram, QObject* parent = nullptr);
    ~BuildInfo() override; // ends what has not answered yet

    // Always the same names in the same order.
    QVector<BuildFact> GetFacts() const { return facts; }

    // One line per fact, name and value parted by a tabulator.
    QString GetText() const;

signals:
    void SigChanged();

private:
    using Read = std::function<QString(const QString& output)>;

    // Shows what `read` makes of the program's output to --version; nothing when it cannot be had.
    void Ask(const QString& name, const QString& program, const QString& missing, const Read& read);
    void Set(int row, const QString& value);

    QVector<BuildFact> facts;
};
