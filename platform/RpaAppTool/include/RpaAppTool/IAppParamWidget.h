// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/RpaAppToolExport.h>
#include <RpaEngineCore/IAppParamEngine.h>

#include <QWidget>

class RpaParamData;

// The parameters of a UI page as its users see them: a form with a field each. A running process reads and
// writes them through IAppParamEngine. GUI thread only.
class RPAAPPTOOL_EXPORT IAppParamWidget : public QWidget, public IAppParamEngine
{
    Q_OBJECT

public:
    // Owned by the parent.
    static IAppParamWidget* CreateParamWidget(QWidget* parent);

    ~IAppParamWidget() override;

    // Shows these parameters and follows their changes; null shows none. Not owned; may go away at any time.
    virtual void SetParamData(RpaParamData* data) = 0;

signals:
    // A run lacks a value: its field is about to take the cursor, and should be seen.
    void SigDemanded();

protected:
    explicit IAppParamWidget(QWidget* parent);
};
