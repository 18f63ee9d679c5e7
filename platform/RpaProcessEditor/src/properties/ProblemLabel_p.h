// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLabel>

// What is wrong with the field above it, in one line that has its room even while there is nothing to say:
// what stands below keeps its place.
class ProblemLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ProblemLabel(const QString& objectName, QWidget* parent = nullptr);

    // Empty: nothing is wrong.
    void Tell(const QString& problem);
};
