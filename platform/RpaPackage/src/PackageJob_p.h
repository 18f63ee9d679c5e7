// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PackageEnvironment_p.h"
#include "PackageProcess_p.h"

#include <RpaPackage/PackageService.h>

#include <QTimer>

#include <functional>
#include <memory>

// One look at an environment, or one installation into it: what is missing is found out, the environment is
// made if need be, pip is called, and the result is looked at again. When pip refuses the packages together
// they are tried one by one, so that one bad name does not keep the others away.
class PackageJob : public QObject
{
    Q_OBJECT

public:
    enum Kind
    {
        Look,
        Install,
    };

    PackageJob(Kind kind, const PackageSettings& settings, const QString& appId,
               const QVector<PackageState>& states, QObject* parent = nullptr);
    // Kills what runs; nothing is announced.
    ~PackageJob() override;

    // SigEnded follows, never inside this call.
    void Start();

signals:
    void SigProgress(int step, int steps, const QString& text);
    void SigOutput(const QString& line);
    // Once. problem: empty when all went well.
    void SigEnded(const QVector<PackageState>& states, const QString& problem);

private:
    using Next = std::function<void(bool ok, const QByteArray& output)>;

    void Run(const QString& program, const QStringList& arguments, const QByteArray& input, bool isShown,
             const Next& next);
    void Probe(const std::function<void()>& next);
    bool TakeProbe(const QByteArray& output);
    void MakeEnvironment();
    void InstallTogether();
    void InstallNext();
    void Pip(const QStringList& requirements, const Next& next);
    void LookAgain();
    void TakeLine(const QString& line);
    void Tell(const QString& text) { emit SigProgress(++step, steps, text); }
    void End(const QString& problem);
    QStringList PipArguments() const;
    QVector<int> Wanted() const;

    const Kind kind;
    const PackageSettings settings;
    const PackageEnvironment environment;
    QVector<PackageState> states;
    std::unique_ptr<PackageProcess> process;
    QTimer deadline;
    QVector<int> oneByOne; // still to be tried, indexes of states
    QString lastError;     // what pip complained about last
    int step = 0;
    int steps = 1;
    int shownLines = 0;
    bool ended = false;
};
