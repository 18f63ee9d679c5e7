// SPDX-License-Identifier: Apache-2.0

// A workstation like the real one, with an author sitting at it: workstation_with_author FOLDER SERVER
#include "Author.h"
#include "Workstation.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    Workstation::PrepareProcess();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3)
        return 2;

    WorkstationPaths paths = WorkstationPaths::Below(arguments.at(1));
    paths.serverProgram = arguments.at(2);
    Workstation workstation(paths);
    QString problem;
    if (!workstation.Start(&problem)) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 1;
    }
    const Author author;
    QObject::connect(&workstation, &Workstation::SigClosed, &application, &QApplication::quit);
    return QApplication::exec();
}
