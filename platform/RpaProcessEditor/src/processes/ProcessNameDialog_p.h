// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_ProcessNameDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QStringList>

#include <functional>

// Asks for the name of a process and says at once what is wrong with it.
class ProcessNameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    static constexpr int maximumLength = 50;

    // taken: names of the other processes.
    ProcessNameDialog(const QString& title, const QString& name, const QStringList& taken, QWidget* parent);

    QString Name() const;

    // Lists what follows the name, from now on as it is typed.
    using Followers = std::function<QVector<ShownPlace>(const QString& name)>;
    void ShowFollowers(const Followers& followers);

    // Empty when the name may be used.
    static QString Problem(const QString& name, const QStringList& taken);

private:
    void SlotEdited();

    const QStringList takenNames;
    Followers placesFor;
    Ui::ProcessNameDialog ui;
};
