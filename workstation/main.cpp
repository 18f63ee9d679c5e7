// SPDX-License-Identifier: Apache-2.0

#include "Workstation.h"

#include <WbBaseUI/PackagedMsgBox.h>

#include <QApplication>

int main(int argc, char** argv)
{
    Workstation::PrepareProcess();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false); // the workstation says when it has ended

    Workstation workstation(WorkstationPaths::ForThisUser());
    QString problem;
    if (!workstation.Start(&problem)) {
        PackagedMsgBox::warn(problem, nullptr, QMessageBox::Ok);
        return 1;
    }
    QObject::connect(&workstation, &Workstation::SigClosed, &application, &QApplication::quit);
    return QApplication::exec();
}
