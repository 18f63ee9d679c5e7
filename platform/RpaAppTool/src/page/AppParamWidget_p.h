// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/IAppParamWidget.h>

#include <QPointer>
#include <QVector>

class FieldsArea;
class QGridLayout;
class ParamField;
class RpaParamData;
class WbLabel;
struct RpaParamItem;

// The parameters as a form, one field for each; it scrolls where it has not enough room.
class AppParamWidget : public IAppParamWidget
{
    Q_OBJECT

public:
    explicit AppParamWidget(QWidget* parent);

    void SetParamData(RpaParamData* data) override;

    QStringList GetParamNames() const override;
    QStringList GetSecretParamNames() const override;
    QVariant GetParam(const QString& name) const override;
    bool SetParam(const QString& name, const QVariant& value) override;
    QString DemandValues() override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Rebuild();
    void ShowValue(int index);
    void ShowField(ParamField* field);
    ParamField* CreateField(int index, const RpaParamItem& item);
    void Place();

    struct Row
    {
        WbLabel* label;
        ParamField* field; // null for the title of a group
        int columns;
    };

    QPointer<RpaParamData> paramData;
    FieldsArea* const area;
    QGridLayout* grid;
    QVector<Row> rows; // one for each parameter
    bool isWide = false;
    int usedLines = 0;
};
