#pragma once

#include <WbBaseUI/WbBaseDialog.h>

// Says what the workstation is and what it was built with.
class AboutDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent);

    // One line per fact, name and value parted by a tabulator.
    static QString BuildFacts();
};
