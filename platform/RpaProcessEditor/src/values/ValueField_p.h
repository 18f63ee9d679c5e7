// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ArgumentText_p.h"

#include <RpaProcessData/RpaValue.h>

#include <QWidget>

class ValueEdit;

// One value that may be a text, a number, a variable or a text with variables, and the button that inserts
// them.
class ValueField : public QWidget
{
    Q_OBJECT

public:
    ValueField(const FieldOffers& fieldOffers, const QString& title, QWidget* parent = nullptr);

    // Shows a value that came from elsewhere; emits nothing.
    void SetValue(const RpaValue& shown);
    RpaValue Value() const;

    void SetMissing(bool missing);
    ValueEdit* Edit() const { return edit; }

signals:
    void SigEdited();
    void SigFinished();

private:
    void Finish();

    const QStringList variables;
    ValueEdit* edit;
    RpaValue value;
    QVector<RpaValuePart> shownParts;
};
