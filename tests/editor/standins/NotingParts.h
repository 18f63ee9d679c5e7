// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CallLog.h"

#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <WbBrowserLite/IBrowserEngine.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbCore/IMonitorSystem.h>

// Stands in for the usage monitor while it lives: "event OXA_AppDevelop_Save".
class NotingMonitor : public IMonitorSystem
{
public:
    NotingMonitor() { IMonitorSystem::SetMonitorSystem(this); }
    ~NotingMonitor() override { IMonitorSystem::SetMonitorSystem(nullptr); }

    void ReportEvent(const QString& eventId, const QString&, const QList<QString>&) override
    {
        CallLog::Note(QStringLiteral("event ") + eventId);
    }
};

// Stands in for the package service while it lives: "install packages: a b", "packages are: a b".
class NotingPackages : public IPackageService
{
    Q_OBJECT

public:
    NotingPackages() : former(RpaPackageModule::Instance()->GetService())
    {
        RpaPackageModule::Instance()->SetService(this);
    }
    ~NotingPackages() override { RpaPackageModule::Instance()->SetService(former); }

    void Install(const QString& json) override
    {
        CallLog::Note(QStringLiteral("install packages: ") + NamesIn(json));
        if (isEager)
            emit SigInstallFinished();
    }
    void Reset(const QString& json) override
    {
        CallLog::Note(QStringLiteral("packages are: ") + NamesIn(json));
    }

    bool isEager = false; // has installed before Install() returns

private:
    static QString NamesIn(const QString& json)
    {
        RpaPackageInfo info;
        info.Parse(json.toUtf8());
        QStringList names;
        const auto items = info.GetListPackageItemPtr();
        for (const auto& item : items)
            names.append(item->name);
        return names.join(QLatin1Char(' '));
    }

    IPackageService* const former;
};

// A browser that only notes what it is told: "browser tool bar", "browser embedded", "browser reset".
class NotingBrowser : public IBrowserWidget, public IBrowserEngine
{
public:
    explicit NotingBrowser(QWidget* parent) : IBrowserWidget(parent) {}

    void InitToolBar() override { CallLog::Note(QStringLiteral("browser tool bar")); }
    void SetEmbedded(bool embedded) override
    {
        CallLog::Note(embedded ? QStringLiteral("browser embedded") : QStringLiteral("browser alone"));
    }
    void Reset() override { CallLog::Note(QStringLiteral("browser reset")); }
    IBrowserEngine* GetBrowserEngine() override { return this; }
    void Open(const QString&, const Answer& answer) override { answer(false, {}); }
    void RunScript(const QString&, const Answer& answer) override { answer(false, {}); }
};
