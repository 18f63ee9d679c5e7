// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "MonkeyLife.h"
#include "Plant.h"
#include "ServerProcess.h"
#include "StormProxy.h"
#include "TestFolder.h"

#include <QMap>
#include <QObject>
#include <QProcess>
#include <QTimer>
#include <QVector>

#include <random>

// Keeps the monkey: a server, the weather between them, one workstation after the other in the same home. A
// workstation that the monkey closed is started again, until enough was done.
class MonkeyRun : public QObject
{
    Q_OBJECT

public:
    // With a plant it ends as soon as the fault is in and was noticed.
    MonkeyRun(quint32 seed, int acts, std::chrono::seconds time, Plant plant = Plant::None);
    ~MonkeyRun() override;

    bool Start();
    // 0 when everything held; with a plant, when that very fault was noticed.
    int GetCode() const { return code; }

signals:
    void SigEnded();

private:
    void Live();
    void Begin();
    void Hear(const QByteArray& line);
    void ChangeWeather();
    void HitServer();
    void SlotLifeEnded(int exitCode, QProcess::ExitStatus status);
    void End(const QString& problem);
    bool NoticedPlant(const QString& problem) const;
    void KeepStore();
    void LoseSaves();
    QString LastActs() const;
    QString SavesThatAreMissing();

    struct Save
    {
        QString version;
        QByteArray sha256;
    };

    const quint32 seed;
    std::mt19937 random;
    const int acts;
    const std::chrono::seconds time;
    const Plant plant;
    bool isPlanted = false;
    TestFolder home;
    ServerProcess server;
    StormProxy proxy;
    QProcess life;
    QTimer weather;
    QElapsedTimer age;
    QVector<Save> saves;
    QMap<QString, int> places;
    int done = 0;
    int lives = 0;
    int kills = 0;
    int kept = 0; // saves that the kept store has
    qint64 longestMs = 0;
    int code = 1;
};
