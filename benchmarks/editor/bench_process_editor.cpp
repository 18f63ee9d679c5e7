// SPDX-License-Identifier: Apache-2.0

// A visual process of 10,000 statements: opening it and scrolling through it, beside a tree of plain texts.

#include "FrameTimes.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QStringListModel>
#include <QTreeView>

namespace
{
constexpr int statementCount = 10000;
constexpr int frames = 400;
const QSize size(1200, 800);

// Blocks of some statements each, over all commands of the catalogue.
RpaAppDataPtr MakeApp()
{
    const QVector<RpaCommandInfo>& commands = RpaCommandCatalogue::Instance()->GetCommands();
    QVector<RpaStatement> statements;
    QVector<RpaStatement>* target = &statements;
    for (int i = 0; i < statementCount; ++i) {
        const RpaCommandInfo& command = commands.at(i % commands.size());
        RpaStatement statement;
        statement.id = QString::number(i);
        statement.command = command.name;
        statement.enabled = i % 17 != 0;
        statement.breakpoint = i % 23 == 0;
        statement.note = i % 5 == 0 ? QStringLiteral("第 %1 步的说明").arg(i) : QString();
        for (const RpaArgumentInfo& argument : command.arguments)
            statement.arguments.insert(argument.name, QStringLiteral("\"值 %1\"").arg(i));
        if (i % 8 == 0)
            target = &statements;
        target->append(statement);
        if (command.HasChildren() && target == &statements)
            target = &statements.last().children;
    }
    auto app = RpaAppDataPtr::create();
    ProcessDataManager* manager = app->GetProcessDataManager();
    manager->Clear();
    manager->AddProcess(QStringLiteral("主流程"))->SetStatements(statements);
    return app;
}

void Scroll(QAbstractScrollArea& view)
{
    FrameTimes::Print("scroll by half a row", FrameTimes::Scroll(view, frames, 23));
    FrameTimes::Print("jump by pages", FrameTimes::Scroll(view, frames, 2011));
}

void MeasureEditor()
{
    const RpaAppDataPtr app = MakeApp();
    std::printf("visual editor, %d statements\n", statementCount);
    ProcessVisualEditorWidget editor;
    editor.resize(size);
    editor.show();
    QCoreApplication::processEvents();
    FrameTimes::PrintTime("open", FrameTimes::Measure([&] { editor.SetRpaAppData(app); }));
    Scroll(*editor.findChild<QTreeView*>(QStringLiteral("statementView")));
}

void MeasurePlainTree()
{
    std::printf("QTreeView, %d plain texts\n", statementCount);
    QStringList texts;
    for (int i = 0; i < statementCount; ++i)
        texts << QStringLiteral("第 %1 步的说明，没有别的内容").arg(i);
    QStringListModel model;
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.resize(size);
    view.show();
    QCoreApplication::processEvents();
    FrameTimes::PrintTime("open", FrameTimes::Measure([&] {
                              model.setStringList(texts);
                              view.setModel(&model);
                          }));
    Scroll(view);
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    MeasureEditor();
    MeasurePlainTree();
    return 0;
}
