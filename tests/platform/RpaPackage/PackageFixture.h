// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"
#include "WheelMaker.h"

#include <RpaPackage/PackageService.h>
#include <RpaProcessData/RpaPackageInfo.h>

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

// A package service with a data folder and a folder of wheels of its own.
class PackageFixture
{
public:
    PackageFixture()
    {
        QDir().mkpath(WheelFolder());
        PackageSettings settings;
        settings.dataFolder = folder.filePath(QStringLiteral("data"));
        settings.wheelFolders = QStringList{WheelFolder()};
        service.SetSettings(settings);
        service.SetApp(QStringLiteral("app-1"));
    }

    QString WheelFolder() const { return folder.filePath(QStringLiteral("wheels")); }

    // A wheel with one module of that name, which holds VALUE.
    bool MakeWheel(const QString& name, const QString& version, int value) const
    {
        return WheelMaker::Make(WheelFolder(), name, version, QStringLiteral("VALUE = %1\n").arg(value));
    }

    static QString ListOf(const QList<PackageItem>& items)
    {
        RpaPackageInfo info(nullptr);
        QList<QSharedPointer<PackageItem>> list;
        for (const PackageItem& item : items)
            list << QSharedPointer<PackageItem>::create(item);
        info.SetListPackageItemPtr(list);
        return QString::fromUtf8(info.ToJson());
    }

    static QString ListOf(const QString& name, const QString& version = QString())
    {
        return ListOf(QList<PackageItem>{PackageItem{name, version}});
    }

    // A program in place of Python: it "fails", "echoes" its arguments or "sleeps".
    static QString OddPython(const char* kind) { return QStringLiteral(ODD_PYTHON).arg(QLatin1String(kind)); }

    void UsePython(const QString& python, std::chrono::milliseconds timeout = std::chrono::minutes(1))
    {
        PackageSettings settings = service.GetSettings();
        settings.python = python;
        settings.timeout = timeout;
        service.SetSettings(settings);
    }

    PackageState StateOf(const QString& name) const
    {
        const QVector<PackageState> states = service.GetStates();
        for (const PackageState& state : states)
            if (state.name == name)
                return state;
        return {};
    }

    TestFolder folder;
    PackageService service;
};
