// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <QObject>

class AppTransfer;
class QWidget;

// Exports and imports apps: asks for the file, shows how far it is, says how it ended.
class TransferController : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void Export(const AppRecord& app, QWidget* window);
    void Import(QWidget* window);

    // Without asking for the file.
    void ExportTo(const AppRecord& app, const QString& path, QWidget* window);
    void ImportFrom(const QString& path, QWidget* window);

    // A name for the file that every system takes.
    static QString FileNameOf(const QString& appName);

signals:
    void SigImported(const QString& appId);

private:
    void Run(AppTransfer* transfer, const QString& title, QWidget* window);
};
