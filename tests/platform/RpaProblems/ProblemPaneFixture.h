// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaProblems/RpaProblemPane.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <QUuid>

// The pane of an app, and what is seen in it.
namespace ProblemPaneFixture
{
inline RpaStatement Step(const char* command, const QMap<QString, QString>& arguments)
{
    RpaStatement statement;
    statement.command = QLatin1String(command);
    statement.arguments = arguments;
    return statement;
}

inline RpaStatement Log(const char* text)
{
    return Step("log", {{QStringLiteral("text"), QLatin1String(text)}});
}

inline RpaStatement Set(const char* name)
{
    return Step("variable.set", {{QStringLiteral("name"), QLatin1String(name)}});
}

// The pane, open, of an app with these statements.
struct Pane
{
    explicit Pane(const QVector<RpaStatement>& statements) : app(new RpaAppData)
    {
        app->InitDefault();
        app->GetAppExtendInfo()->SetAppId(QUuid::createUuid().toString());
        Main()->SetStatements(statements);
        widget.resize(800, 300);
        widget.show();
        widget.SetApp(app.data());
        PressFold();
    }

    RpaProcess* Main() const { return app->GetProcessDataManager()->GetProcess(0); }
    template <typename Widget>
    Widget* Find(const char* name) const
    {
        return widget.findChild<Widget*>(QLatin1String(name));
    }
    void PressFold() const { QTest::mouseClick(Find<QToolButton>("problemFoldButton"), Qt::LeftButton); }
    QCheckBox* RunOnly() const { return Find<QCheckBox>("checkRunOnly"); }
    QStringList Messages() const
    {
        QStringList messages;
        for (int row = 0; row < List()->topLevelItemCount(); ++row)
            messages.append(Row(row)->text(0));
        return messages;
    }
    // As the check before a run of the main process does.
    QList<RpaCheckInfo> Check() const
    {
        return RpaProcessCheck(*app->GetProcessDataManager()).Check(Main()->GetName());
    }
    // A run that failed at a statement, or at a line of the program.
    RpaCheckInfo Failure(const QString& statementId, int line = 0) const
    {
        return {Main()->GetName(),
                statementId,
                QStringLiteral("run-failed"),
                QStringLiteral("除数为零"),
                QStringLiteral("请检查除数"),
                line};
    }
    QString IdOf(int row) const { return Main()->GetRoot()->GetChild(row)->GetId(); }
    QTreeWidget* List() const { return Find<QTreeWidget>("problemList"); }
    QString Counts() const { return Find<QLabel>("labelProblemCounts")->text(); }
    QTreeWidgetItem* Row(int row) const { return List()->topLevelItem(row); }
    void Press(const QString& title)
    {
        emit List()->customContextMenuRequested(List()->visualItemRect(List()->currentItem()).center());
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction* action : menu->actions())
            if (action->text() == title && action->isEnabled())
                action->trigger();
        menu->close();
    }

    RpaAppDataPtr app;
    RpaProblemPane widget;
};
} // namespace ProblemPaneFixture
