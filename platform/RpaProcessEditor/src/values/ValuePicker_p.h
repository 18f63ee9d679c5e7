// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentText_p.h"

#include <QObject>

class QMenu;
class QToolButton;
class QWidget;

// The menu of what may be inserted into a value: variables, parameters, columns of a row, dates, files,
// folders and fixed values. Opened by its button or by Open().
class ValuePicker : public QObject
{
    Q_OBJECT

public:
    // The widget is what the values go into; it owns the picker.
    ValuePicker(const FieldOffers& fieldOffers, const QString& title, QWidget* target);

    // Its name tells of which field it is.
    QToolButton* MakeButton();
    void Open();

signals:
    // A Code or a Text.
    void SigPicked(const RpaValuePart& part);

private:
    void Fill(QMenu* menu);
    void AddCode(QMenu* menu, const QString& title, const QString& python);
    void AddColumns(QMenu* menu);
    void AddDates(QMenu* menu);
    void AddFiles(QMenu* menu);
    void PickPath(bool folder);
    void PickText(const QString& text);

    const FieldOffers offers;
    const QString what;
    QWidget* const widget;
    QToolButton* button = nullptr;
};
