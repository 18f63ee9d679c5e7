#include "MainWindow.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourDriver.h"
#include "TourReport.h"
#include "VirtualDisplay.h"
#include "Workstation.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>

// rpa-tour [--virtual-display] FOLDER
// Tours a real workstation with a real server, in a home of its own; pictures and report.json go to the
// folder.
namespace
{
constexpr int screenWidth = 1440;
constexpr int screenHeight = 900;

bool EnsureDisplay(VirtualDisplay& display, bool always)
{
    if (VirtualDisplay::HasRealOne() && !always) {
        return true;
    }
    if (!display.Start(screenWidth, screenHeight)) {
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
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        qputenv(variable, home.toLocal8Bit());
    }
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR",
                home.toLocal8Bit()); // a folder of this user alone, as temporary folders are
    }
}

int TourIn(const QString& folder, const QString& home)
{
    TourReport report(folder);
    ToastWatcher toasts;
    Workstation workstation(WorkstationPaths::Below(home));
    workstation.GetSettings()->SetTheme(ThemeChoice::Light);
    workstation.GetSettings()->SetDateLanguage(DateLanguage::Chinese);
    QString problem;
    if (!workstation.Start(&problem)) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 2;
    }
    workstation.GetWindow()->move(0, 0);
    TourDriver driver(&report, workstation.GetWindow());
    Tour tour(&workstation, &driver, &toasts);
    const std::unique_ptr<QThread> guest(QThread::create([&tour] { tour.Run(); }));
    QObject::connect(guest.get(), &QThread::finished, qApp, &QApplication::quit);
    guest->start();
    QApplication::exec();
    guest->wait();
    std::printf("%s\n", report.EveryStepHeld() ? "Every step held." : "Not every step held.");
    return report.EveryStepHeld() ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    const bool always = argc == 3 && qstrcmp(argv[1], "--virtual-display") == 0;
    if (argc != 2 && !always) {
        std::fprintf(stderr, "usage: rpa-tour [--virtual-display] FOLDER\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[argc - 1]);
    VirtualDisplay display;
    if (!EnsureDisplay(display, always)) {
        return 2;
    }
    const QTemporaryDir home;
    UseHome(home.path());
    int code = 2;
    // The tour may be made by root, in a container say; it opens no pages but its own.
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    {
        Workstation::PrepareProcess();
        QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        code = TourIn(folder, home.path());
    }
    // Left to itself the display would be gone before the windows are.
    std::fflush(stdout);
    return code;
}
