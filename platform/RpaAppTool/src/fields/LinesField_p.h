// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ValueField_p.h"

#include <RpaAppData/RpaParamData.h>

class WbTextEdit;

// A text of several lines, or several files: a path in each line, typed or chosen.
class LinesField : public ValueField
{
    Q_OBJECT

public:
    explicit LinesField(const RpaParamItem& item);

    void ShowValue(const QVariant& value) override;

private:
    void AddButton();
    void ChooseFiles();
    void TakeText();
    QVariant ValueOf(const QString& text) const;

    const bool isFiles;
    const QStringList endings;
    WbTextEdit* edit;
};
