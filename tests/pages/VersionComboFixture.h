// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaVersionCombo.h"

#include <QObject>

#include <memory>

class QListWidget;
class RpaVersionItem;

// Each test has a version list of its own on the screen.
class VersionComboFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    static QString Text(const char* utf8) { return QString::fromUtf8(utf8); }

    void Fill(int rows);
    RpaVersionItem* Row(int index) const;
    void PressRow(int index) const;
    void PressFace() const;
    // A whole click on the face, as the window system sends it.
    void ClickFace() const;
    bool IsPopupOpen() const;

    std::unique_ptr<RpaVersionCombo> combo;
    QListWidget* list = nullptr;
};
