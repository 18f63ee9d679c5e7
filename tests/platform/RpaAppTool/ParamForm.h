// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaParamData.h>
#include <RpaAppTool/IAppParamWidget.h>

#include <QLabel>
#include <QTest>
#include <QToolButton>

#include <memory>

// The parameters of a page on the screen, one of each usual kind: 0 text, 1 number, 2 date, 3 choice, 4
// switch, 5 file, 6 password. Made anew for each test.
class ParamForm
{
protected:
    void Show()
    {
        host = std::make_unique<QWidget>();
        widget = IAppParamWidget::CreateParamWidget(host.get());
        params = std::make_unique<RpaParamData>();
        Add("text", RpaParamType::Text);
        Add("number", RpaParamType::Number);
        Add("date", RpaParamType::Date);
        Add("choice", RpaParamType::Choice);
        Add("switch", RpaParamType::Switch);
        Add("file", RpaParamType::File);
        Add("password", RpaParamType::Password);
        widget->SetParamData(params.get());
        host->show();
    }

    void Add(const char* name, RpaParamType type)
    {
        RpaParamItem item;
        item.name = QLatin1String(name);
        item.type = type;
        item.choices = QStringList{QStringLiteral("甲"), QStringLiteral("乙")};
        QVERIFY(params->InsertItem(-1, item) >= 0);
    }
    QWidget* Field(int index)
    {
        return widget->findChildren<QWidget*>(QStringLiteral("paramField")).value(index);
    }

    void Demand(int index, const QString& label, const QVariant& least, const QVariant& most)
    {
        RpaParamItem item = params->GetItem(index);
        item.label = label;
        item.required = true;
        item.least = least;
        item.most = most;
        QVERIFY(params->SetItem(index, item));
    }
    // The text below a field; none before there was one.
    QLabel* Problem(int index)
    {
        return Field(index)->parentWidget()->findChild<QLabel*>(QStringLiteral("paramProblem"));
    }

    void PressTool(const QString& tip)
    {
        for (auto* button : widget->findChildren<QToolButton*>()) {
            if (button->toolTip() == tip) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL("no button");
    }

    std::unique_ptr<RpaParamData> params;
    std::unique_ptr<QWidget> host;
    IAppParamWidget* widget = nullptr;
};
