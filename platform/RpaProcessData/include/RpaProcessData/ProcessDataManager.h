// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <WbFoundation/IJsonParser.h>

#include <QStringList>

#include <memory>

class RpaPackageInfo;
class RpaProcess;

// The processes of an app, in order; names are unique, compared exactly, of any length and script. GUI thread
// only. Processes are owned here; a pointer is valid until SigProcessAboutToBeRemoved or SigAboutToReset.
class RPAPROCESSDATA_EXPORT ProcessDataManager : public IJsonParser
{
    Q_OBJECT

public:
    explicit ProcessDataManager(QObject* parent = nullptr);
    ~ProcessDataManager() override;

    // How many there are, and their names in order; the first is the main one.
    int GetCount() const;
    QStringList GetProcessNames() const;
    // Name of the first process, the app's main one; empty when there is none.
    QString GetProcessNameFirst() const;

    // Null outside 0 … GetCount() - 1 / when there is no process of that name.
    RpaProcess* GetProcess(int index) const;
    RpaProcess* FindProcess(const QString& name) const;
    // -1 when there is none.
    int IndexOf(const QString& name) const;

    // Adds before the index (-1: at the end). Null when the name is blank or taken.
    RpaProcess* AddProcess(const QString& name, int index = -1);
    // A name of the form "流程2" that is free.
    QString MakeFreeName(const QString& stem) const;
    // False when there is no such process or the new name is blank or taken by another. Statements that run
    // the process by its old name follow.
    bool RenameProcess(const QString& name, const QString& newName);
    bool RemoveProcess(const QString& name);
    bool MoveProcess(int from, int to);
    void Clear();

    // Replaces the items of info by the packages that the enabled statements use according to the command
    // catalogue, sorted by name. True when there is at least one.
    bool GetPackageInfo(RpaPackageInfo& info) const;

    void WriteJson(JsonWriter& writer) const override;
    Commit ReadJson(JsonReader& reader) override;

signals:
    // A process came to index. It has its content already.
    void SigProcessAdded(int index);
    // Its pointer is valid until SigProcessRemoved, after which index is that of the next one.
    void SigProcessAboutToBeRemoved(int index);
    void SigProcessRemoved(int index);
    // Statements that run it by its old name are changed already.
    void SigProcessRenamed(int index, const QString& oldName);
    // to is the index after the move.
    void SigProcessMoved(int from, int to);
    // Everything is replaced (Parse, Clear).
    void SigAboutToReset();
    void SigReset();
    // After each of the above and after every change inside a process.
    void SigChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
