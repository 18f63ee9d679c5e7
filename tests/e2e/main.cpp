// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"
#include "TestFolder.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourDriver.h"
#include "TourReport.h"
#include "VirtualDisplay.h"
#include "Workstation.h"

#include <QApplication>
#include <QThread>

#include <cstdio>

// rpa-tour [--virtual-display] [--dark] [--scale PERCENT] [--keyboard] FOLDER
// Tours a real workstation with a real server, in a home of its own; pictures and report.json go to the
// folder. --dark: every picture in the dark scheme, not only those of the steps that look at it. --scale: as
// on a denser screen. --keyboard: the hour without a mouse alone.
namespace
{
constexpr int screenWidth = 1440;
constexpr int screenHeight = 900;

bool EnsureDisplay(VirtualDisplay& display, bool always, int percent)
{
    if (VirtualDisplay::HasRealOne() && !always)
        return true;
    if (!display.Start(screenWidth * percent / 100, screenHeight * percent / 100)) {
        std::fprintf(stderr, "No display, and none in memory either: %s\n", qPrintable(display.GetProblem()));
        return false;
    }
    std::printf("There is no display here: touring on %s, a screen in memory\n",
                qPrintable(display.GetName()));
    qputenv("QT_QPA_PLATFORM", "xcb");
    return true;
}

void UseHome(const QString& home)
{
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, home.toLocal8Bit());
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR",
                home.toLocal8Bit()); // a folder of this user alone, as temporary folders are
    }
}

struct Wishes
{
    bool virtualDisplay = false;
    ThemeChoice theme = ThemeChoice::Light;
    int percent = 100;
    bool keyboardOnly = false;
    QString folder;
};

// False when the arguments cannot be understood.
bool Understand(const QStringList& arguments, Wishes& wishes)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument == QLatin1String("--virtual-display"))
            wishes.virtualDisplay = true;
        else if (argument == QLatin1String("--dark"))
            wishes.theme = ThemeChoice::Dark;
        else if (argument == QLatin1String("--keyboard"))
            wishes.keyboardOnly = true;
        else if (argument == QLatin1String("--scale"))
            wishes.percent = arguments.value(++i).toInt();
        else if (argument.startsWith(QLatin1Char('-')) || !wishes.folder.isEmpty())
            return false;
        else
            wishes.folder = argument;
    }
    return !wishes.folder.isEmpty() && wishes.percent >= 100 && wishes.percent <= 400;
}

int TourIn(const Wishes& wishes, const QString& home)
{
    TourReport report(wishes.folder);
    ToastWatcher toasts;
    Workstation workstation(WorkstationPaths::Below(home));
    workstation.GetSettings()->SetTheme(wishes.theme);
    workstation.GetSettings()->SetDateLanguage(DateLanguage::Chinese);
    QString problem;
    if (!workstation.Start(&problem)) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 2;
    }
    workstation.GetWindow()->move(0, 0);
    TourDriver driver(&report, workstation.GetWindow());
    Tour tour(&workstation, &driver, &toasts);
    const std::unique_ptr<QThread> guest(
        QThread::create([&] { wishes.keyboardOnly ? tour.RunByKeyboard() : tour.Run(); }));
    QObject::connect(guest.get(), &QThread::finished, qApp, &QApplication::quit);
    guest->start();
    QApplication::exec();
    guest->wait();
    report.AddForeignTexts(driver.GetTexts().FindForeign());
    std::printf("%s\n", report.EveryStepHeld() ? "Every step held." : "Not every step held.");
    return report.EveryStepHeld() ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    Wishes wishes;
    if (!Understand(arguments, wishes)) {
        std::fprintf(stderr,
                     "usage: rpa-tour [--virtual-display] [--dark] [--scale PERCENT] [--keyboard] FOLDER\n");
        return 2;
    }
    VirtualDisplay display;
    if (!EnsureDisplay(display, wishes.virtualDisplay, wishes.percent))
        return 2;
    const TestFolder home;
    UseHome(home.path());
    int code = 2;
    // The tour may be made by root, in a container say; it opens no pages but its own.
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    if (wishes.percent != 100)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(wishes.percent / 100.0));
    {
        Workstation::PrepareProcess();
        QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        code = TourIn(wishes, home.path());
    }
    // Left to itself the display would be gone before the windows are.
    std::fflush(stdout);
    return code;
}
