// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EditorDriver.h"
#include "EditorWorld.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QtTest>

// The author is capturing an element while it lives.
class CapturingInspector : public IRpaInspector
{
    Q_OBJECT

public:
    CapturingInspector() { RpaEngineTool::Instance()->SetHtmlInspector(this); }
    bool IsCapturing() const override { return true; }
};

// A package service that installs when the test says so.
class PatientPackageService : public IPackageService
{
    Q_OBJECT

public:
    PatientPackageService() : former(RpaPackageModule::Instance()->GetService())
    {
        RpaPackageModule::Instance()->SetService(this);
    }
    ~PatientPackageService() override { RpaPackageModule::Instance()->SetService(former); }

    void Install(const QString& json) override
    {
        installed.append(json);
        emit SigInstallCalled();
    }
    void Reset(const QString& json) override { reset.append(json); }

    QStringList installed;
    QStringList reset;

signals:
    void SigInstallCalled();

private:
    IPackageService* const former;
};

namespace Run
{
inline void Start(const EditorDriver& author, const QString& processName)
{
    QVERIFY(
        QMetaObject::invokeMethod(author.Find("pageUIDesign"), "SigRunProcess", Q_ARG(QString, processName)));
}

inline void Stop(const EditorDriver& author, const QString& processName)
{
    QVERIFY(QMetaObject::invokeMethod(author.Find("pageUIDesign"), "SigStopProcess",
                                      Q_ARG(QString, processName)));
}

inline QString MainProcess(const RpaAppData& app)
{
    return app.GetProcessDataManager()->GetProcessNameFirst();
}

// Adds a statement to the main process.
inline void Add(RpaAppData& app, const QString& command, const QMap<QString, QString>& arguments,
                const QString& output = {}, bool enabled = true)
{
    RpaStatement statement;
    statement.command = command;
    statement.arguments = arguments;
    statement.output = output;
    statement.enabled = enabled;
    app.GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {statement});
}

inline void UseExcel(RpaAppData& app)
{
    Add(app, QStringLiteral("excel.create"), {}, QStringLiteral("工作簿"));
}
} // namespace Run
