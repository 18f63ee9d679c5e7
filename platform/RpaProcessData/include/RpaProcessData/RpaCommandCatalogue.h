// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcessDataExport.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

// What an argument holds; decides the field it is edited with, how its text becomes Python and how it is
// checked.
enum class RpaArgumentType
{
    Text,       // literal text, or "=" and a Python expression
    Number,     // literal number, or "=" and a Python expression
    Switch,     // "true" or "false", or "=" and a Python expression
    Choice,     // one of the choices
    Expression, // a Python expression without "=" (conditions, values)
    Variable,   // name of a variable that the statement writes or changes
    Process,    // name of a process of the app
    Element,    // id of a captured web element
    File,       // path, or "=" and a Python expression
    Folder,     // path, or "=" and a Python expression
    Parameter,  // name of a parameter of the UI page, or "=" and a Python expression
};

// How an Expression is shown to an author who does not write Python; its text is the same.
enum class RpaArgumentForm
{
    Code,       // as Python
    Condition,  // as rows of comparisons
    List,       // as a column of values
    Columns,    // as one row of the page's table
    Table,      // as a grid of values
    Dictionary, // as a grid of keys and values
};

// One of the values that a Choice may have: as the argument holds it, and as the author reads it.
struct RPAPROCESSDATA_EXPORT RpaChoice
{
    QString value;
    QString title;
};

// One argument of a command as its data file describes it.
struct RPAPROCESSDATA_EXPORT RpaArgumentInfo
{
    QString name;
    QString title; // 中文
    RpaArgumentType type = RpaArgumentType::Text;
    QString defaultValue;
    bool required = false;
    bool multiline = false;
    bool changes = false;       // of a Variable: it must have a value already
    QVector<RpaChoice> choices; // of a Choice
    QString description;
    RpaArgumentForm form = RpaArgumentForm::Code; // of an Expression
};

// What a command gives, for a variable of the author.
struct RPAPROCESSDATA_EXPORT RpaOutputInfo
{
    QString title; // 中文, empty when the command has no output
    QString type;  // text, number, list, table, …; for the author
    QString defaultName;
    bool required = false;
};

// Whether other statements stand inside a command, and what that means for them.
enum class RpaBlockKind
{
    None,   // has no children
    Block,  // has children
    Loop,   // has children; "break" and "continue" are allowed inside
    Branch, // has children and continues the statement before it (else, except); see RpaCommandInfo::follows
};

// One command as its data file describes it.
struct RPAPROCESSDATA_EXPORT RpaCommandInfo
{
    QString name;
    QString title; // 中文
    QString group; // 中文
    QString description;
    QString icon; // resource name without path
    QStringList keywords;
    QVector<RpaArgumentInfo> arguments;
    RpaOutputInfo output;
    RpaBlockKind blockKind = RpaBlockKind::None;
    QStringList follows;    // commands one of which must stand directly before a Branch
    QStringList followedBy; // commands one of which must stand directly behind (a try needs an except)
    bool onlyInLoop = false;
    QString summary;        // one line for the card, with ${argument} and ${output} places
    QString pythonTemplate; // lines with ${argument} and ${output} places; children go below it, indented
    QStringList imports;    // lines that the program needs once, at its top
    QVector<PackageItem> packages;

    // Whether other statements may stand inside.
    bool HasChildren() const { return blockKind != RpaBlockKind::None; }
    // Null when there is no such argument.
    const RpaArgumentInfo* FindArgument(const QString& argumentName) const;
};

// All commands, read from the data files built into this library and, if any, from folders that the
// workstation adds. GUI thread only.
class RPAPROCESSDATA_EXPORT RpaCommandCatalogue
{
public:
    // The one of the process, made and read at the first call.
    static RpaCommandCatalogue* Instance();

    // In the order of the data files.
    const QVector<RpaCommandInfo>& GetCommands() const;
    // 中文, each once, in the order of their first command.
    QStringList GetGroups() const;
    // Null when there is no such command.
    const RpaCommandInfo* Find(const QString& name) const;

    // Reads every "*.json" of a folder, by file name; a command of a known name replaces it. Returns one line
    // per problem, in Chinese; a file with a problem adds nothing. Pointers handed out before become invalid.
    QStringList AddFolder(const QString& folder);

private:
    RpaCommandCatalogue();
    ~RpaCommandCatalogue();

    class Private;
    const std::unique_ptr<Private> d;
};
