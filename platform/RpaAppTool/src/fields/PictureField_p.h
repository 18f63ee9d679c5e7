// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ValueField_p.h"

#include <QThreadPool>

class QImage;
class QLabel;

// A picture that a run shows. Its file is read away from the GUI thread, and not believed.
class PictureField : public ValueField
{
    Q_OBJECT

public:
    explicit PictureField(const QString& title);
    // Waits for the picture that is being read.
    ~PictureField() override;

    void ShowValue(const QVariant& value) override;

private:
    void Load(const QString& path);
    void Show(int order, const QImage& image, const QString& problem);

    QLabel* label;
    QThreadPool reading;
    int newest = 0;
};
