// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QObject>
#include <QString>

#include <memory>

class RpaParamData;
class RpaTableData;
class RpaToolData;

// One UI page of an app. Its parts live as long as the page. GUI thread only.
class RPAAPPDATA_EXPORT RpaUIData : public QObject
{
    Q_OBJECT

public:
    ~RpaUIData() override;

    // Unique in the app.
    QString GetName() const;

    // Never null.
    RpaToolData* GetToolData() const;
    RpaParamData* GetParamData() const;
    RpaTableData* GetTableData() const;

signals:
    // The name or anything inside the parts changed.
    void SigChanged();
    // There are other results of runs than before, in the parameters or in the table.
    void SigResultsChanged();

private:
    friend class RpaUIDataManager;
    explicit RpaUIData(const QString& name, QObject* parent = nullptr);

    class Private;
    const std::unique_ptr<Private> d;
};
