// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFlags>
#include <QKeySequence>
#include <QString>
#include <QVector>

// What can be done by a key from anywhere on a page.
enum class KeyAct
{
    ShowPalette,
    ShowGuide,
    ShowKeys,
    Back,
    Settings,
    ListMine,
    ListOnline,
    ListGray,
    ListNext,
    ListPrevious,
    NewVisual,
    NewProgram,
    SearchApps,
    RefreshApps,
    PageUI,
    PageProcess,
    PageUsage,
    PageNext,
    PagePrevious,
    Save,
    SaveAs,
    Undo,
    Redo,
    Run,
    RunFree,
    RunToHere,
    RunFromHere,
    RunSelected,
    Pause,
    StepOver,
    StepInto,
    StepOut,
    Breakpoint,
    DebugPanes,
    Stop,
    Gray,
    Publish,
    ExportTemplate,
    ChooseVersion,
    ShowVersions,
    ShowRuns,
    ShowProblems,
    FoldBrowser,
    PopOutBrowser,
    Packages,
};

// Where an act belongs.
enum class KeyPlace
{
    Lists = 1,
    Editor = 2,
    Run = 4,
    Other = 8,
    Everywhere = 15,
};
Q_DECLARE_FLAGS(KeyPlaces, KeyPlace)
Q_DECLARE_OPERATORS_FOR_FLAGS(KeyPlaces)

struct KeyRow
{
    KeyAct act;
    QString text;
    QVector<QKeySequence> keys; // the first one is shown
    KeyPlaces places = {};
    QString group = {};
};

// The one table of the workstation's keys.
namespace KeyTable
{
const QVector<KeyRow>& Rows();
const KeyRow& RowOf(KeyAct act);

// The row of that key where the user is; null when the key means nothing there.
const KeyRow* Find(const QKeySequence& key, KeyPlace place);

// As it stands on the keys of this machine, in Chinese; empty without a key.
QString KeyText(const QKeySequence& key);
} // namespace KeyTable
