// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Monkey.h"
#include "PlantedLife.h"
#include "Watchdog.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <cstdio>
#include <memory>

class Workstation;

// One workstation with a monkey at it, from start to close, in a process of its own. Says on standard output
// what the keeper of the monkey has to know, a line each:
//   storm                     may begin
//   planted                   the fault that was to be planted is in
//   saved VERSION SHA256      the server has acknowledged a save
//   calm                      the monkey has left; from here on everything must be answered
//   acts N                    how much it did
//   place NAME N              how much of it where
//   longest MS                the longest time in which the GUI thread was not heard of
class MonkeyLife : public QObject
{
    Q_OBJECT

public:
    struct Order
    {
        QString home;
        QString server;
        quint32 seed = 0;
        int acts = 0;
        std::chrono::seconds time{0}; // once something was done; 0: as long as the acts take
        std::chrono::seconds patience{60};
        // The workstation itself waits a minute and a half for saves that are under way.
        std::chrono::seconds longestLeaving{150};
        QStringList accounts;
        QString password;
        Plant plant = Plant::None;
    };

    explicit MonkeyLife(const Order& order);
    ~MonkeyLife() override;

    // False with a reason on standard error.
    bool Start();

    // 0 unless it could not be closed.
    int GetCode() const { return code; }

public slots:
    // In the place of the programs of the system.
    void SlotOpenNothing(const QUrl&) {}

private:
    void Prepare(bool isFirst);
    void LetLoose();
    void CalmDown();
    void Leave();
    void SlotClosed();
    void DismissWhatIsOpen();
    static void Say(const QString& line);
    void Note(const QString& act);

    const Order order;
    Watchdog watchdog;
    std::unique_ptr<FILE, int (*)(FILE*)> acts;
    std::unique_ptr<Workstation> workstation;
    std::unique_ptr<Monkey> monkey;
    std::unique_ptr<PlantedLife> planted;
    QTimer heart;
    QTimer leaving;
    QElapsedTimer age;
    QElapsedTimer leavingSince;
    bool closed = false;
    int code = 1;
};
