// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <QStringList>

#include <memory>

namespace Ui
{
class ProcessNameDialog;
}

// Asks for the name of a process and says at once what is wrong with it.
class ProcessNameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    static constexpr int maximumLength = 50;

    // taken: names of the other processes.
    ProcessNameDialog(const QString& title, const QString& name, const QStringList& taken, QWidget* parent);
    ~ProcessNameDialog() override;

    QString Name() const;

    // Empty when the name may be used.
    static QString Problem(const QString& name, const QStringList& taken);

private:
    void SlotEdited();

    const QStringList takenNames;
    const std::unique_ptr<Ui::ProcessNameDialog> ui;
};
