#pragma once

#include <RpaAppTool/IAppParamWidget.h>

#include <QPointer>
#include <QVector>

class QFormLayout;
class ParamField;
class RpaParamData;

// The parameters as a form, one field for each.
class AppParamWidget : public IAppParamWidget
{
    Q_OBJECT

public:
    explicit AppParamWidget(QWidget* parent);
    ~AppParamWidget() override;

    void SetParamData(RpaParamData* data) override;

    QStringList GetParamNames() const override;
    QStringList GetSecretParamNames() const override;
    QVariant GetParam(const QString& name) const override;
    bool SetParam(const QString& name, const QVariant& value) override;
    QString DemandValues() override;

private:
    void Rebuild();
    void ShowValue(int index);
    void ShowField(ParamField* field);

    QPointer<RpaParamData> paramData;
    QFormLayout* form;
    QVector<ParamField*> fields;
};
