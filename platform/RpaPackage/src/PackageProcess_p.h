// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/ChildProcess.h>

#include <QObject>
#include <QStringList>

// One child process of the service, with whatever it starts: killed as a whole, its output bounded.
class PackageProcess : public QObject
{
    Q_OBJECT

public:
    explicit PackageProcess(QObject* parent = nullptr);
    // Kills it.
    ~PackageProcess() override;

    // SigEnded follows, never inside this call.
    void Start(const QString& program, const QStringList& arguments, const QString& workingFolder,
               const QByteArray& input = QByteArray());

    bool IsRunning() const;

    // Kills the process and its descendants; nothing is announced.
    void Kill();

signals:
    void SigLine(const QString& line);
    // ok: it ended by itself with code 0. output: the first 256 kB.
    void SigEnded(bool ok, const QByteArray& output);

private:
    void TakeOutput();
    void End(bool ok);

    ChildProcess process;
    QByteArray output;
    QByteArray line;
};
