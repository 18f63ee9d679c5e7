// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class IRpaDebugger;

// Stands in for the process engine in the program that it is linked into: RpaEngineModule runs nothing there
// and notes in the CallLog what it is handed and told, each part by what it holds:
//
//     browser: some | params: 数量 | columns: 金额 | elements: 按钮 | windows: 窗口 | processes: 主流程
//     run of app1 with key1 in develop | translate statements: yes | report statements: yes
//     check 主流程 | execute 主流程 | terminate 主流程 | log emptied
//
// The program's own definition is found before the library's, which ELF does and Windows does not.
namespace StandInEngine
{
// Finds nothing wrong and starts everything.
void Reset();

// What the next checks and starts answer.
void SetCheckResult(bool good);
void SetExecuteResult(bool started);
} // namespace StandInEngine
