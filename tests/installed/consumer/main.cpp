// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RobotExecuteInfo.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);

    RpaAppEditorWidget editor(nullptr);
    editor.show();
    if (editor.BeforeClose() != BeforeCloseResult::NothingPending)
        return 1;

    std::puts("editor built and closed");
    return 0;
}
