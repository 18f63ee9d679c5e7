// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PackageFixture.h"

#include <RpaPackage/RpaPackagePanel.h>

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

// A panel over a service, shown.
class PanelFixture : public PackageFixture
{
public:
    explicit PanelFixture(const QString& list = QString())
    {
        service.Reset(list);
        // An app that takes the list.
        QObject::connect(&service, &IPackageService::SigSaveConfig, &app, [] {});
        panel = std::make_unique<RpaPackagePanel>(&service);
        panel->resize(620, 460);
        panel->show();
        tester = std::make_unique<QAbstractItemModelTester>(Table()->model());
    }

    template <class T>
    T* Find(const char* name) const
    {
        return panel->findChild<T*>(QLatin1String(name));
    }
    QTableView* Table() const { return Find<QTableView>("tablePackages"); }
    QString Cell(int row, int column) const { return Table()->model()->index(row, column).data().toString(); }
    int Rows() const { return Table()->model()->rowCount(); }
    QString Note() const { return Find<QLabel>("labelPackageNote")->text(); }

    void Type(const QString& name, const QString& version = QString()) const
    {
        Find<QLineEdit>("editPackageName")->clear();
        Find<QLineEdit>("editPackageVersion")->clear();
        QTest::keyClicks(Find<QLineEdit>("editPackageName"), name);
        QTest::keyClicks(Find<QLineEdit>("editPackageVersion"), version);
        QTest::keyClick(Find<QLineEdit>("editPackageVersion"), Qt::Key_Return);
    }

    void Press(const char* name) const { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }

    QObject app;
    std::unique_ptr<RpaPackagePanel> panel;
    std::unique_ptr<QAbstractItemModelTester> tester;
};
