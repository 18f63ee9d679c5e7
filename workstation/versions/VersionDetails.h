// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionFacts.h"

#include <QWidget>

class QVBoxLayout;
class WbLabel;

// What is known of one version, in lines that wrap: its state, who saved it and when, with which note.
class VersionDetails : public QWidget
{
    Q_OBJECT

public:
    // mostSaves: how many saves are listed.
    explicit VersionDetails(int mostSaves, QWidget* parent = nullptr);

    // progress: shown in place of saves that are not known.
    void Show(const VersionFacts& version, const QString& progress, DateLanguage language);

private:
    void ShowSaves(const VersionFacts& version, const QString& progress, DateLanguage language);

    const int most;
    WbLabel* labelName;
    WbLabel* labelState;
    WbLabel* labelDescription;
    QWidget* list = nullptr;
    QVBoxLayout* layout;
};
