// SPDX-License-Identifier: Apache-2.0

#include "MonkeyLife.h"

#include "MainWindow.h"
#include "MonkeySight.h"
#include "SampleInstaller.h"
#include "Session.h"
#include "Workstation.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFile>

namespace
{
constexpr auto heartBeat = std::chrono::milliseconds(100);
constexpr int leastActs = 500; // on a machine so busy that the time alone would be for nothing
constexpr auto pauseBetweenSignIns = std::chrono::seconds(13); // five in a minute
constexpr auto lookEvery = std::chrono::milliseconds(20);

void ShortenWaits()
{
    WbHttpLimits limits;
    limits.connect = std::chrono::seconds(1);
    limits.inactivity = std::chrono::seconds(2);
    limits.total = std::chrono::seconds(5);
    VersionServiceSettings::Instance()->SetLimits(limits);
}

FILE* warnings = nullptr; // what the monkey did

// What the platform in memory says about itself is nobody's fault.
void LeaveOutThePlatform(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    Q_UNUSED(context)
    if (type != QtDebugMsg && !message.startsWith(QLatin1String("This plugin does not support"))) {
        std::fprintf(stderr, "monkey: %s\n", qPrintable(message));
        std::fprintf(warnings, "WARNING %s\n", qPrintable(message));
    }
}

void WriteSomeFiles(const QString& folder)
{
    QDir().mkpath(folder);
    for (int i = 0; i < 3; ++i) {
        QFile file(folder + QStringLiteral("/file%1.csv").arg(i));
        if (file.open(QIODevice::WriteOnly))
            file.write("a,1\r\nb,2\r\n");
    }
}
} // namespace

MonkeyLife::MonkeyLife(const Order& given)
    : order(given), watchdog(given.patience),
      acts(std::fopen(qPrintable(given.home + QStringLiteral("/acts.txt")), "w"), &std::fclose)
{
    if (!acts)
        qFatal("cannot write to %s", qPrintable(order.home));
    warnings = acts.get();
    qInstallMessageHandler(&LeaveOutThePlatform);
    for (const char* scheme : {"http", "https", "mailto", "file"})
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "SlotOpenNothing");
    connect(&heart, &QTimer::timeout, this, [this] { watchdog.Beat(); });
    heart.start(heartBeat);
    connect(&leaving, &QTimer::timeout, this, &MonkeyLife::Leave);
}

MonkeyLife::~MonkeyLife()
{
    monkey.reset();
    workstation.reset();
    qInstallMessageHandler(nullptr);
}

bool MonkeyLife::Start()
{
    const bool isFirst = !QFile::exists(order.home + QStringLiteral("/files"));
    WriteSomeFiles(order.home + QStringLiteral("/files"));
    workstation = std::make_unique<Workstation>(WorkstationPaths::Below(order.home));
    workstation->GetSettings()->SetEmbeddedServer(false);
    workstation->GetSettings()->SetServerAddress(QUrl(order.server));
    workstation->GetSettings()->SetStaySignedIn(true); // a server takes few passwords in a minute
    connect(RpaEditorLogic::Instance()->GetSaveLedger(), &SaveLedger::SigSaveConfirmed, this,
            [](const QString&, const QString& version, int, const QByteArray& sha256) {
                Say(QStringLiteral("saved %1 %2").arg(version, QString::fromLatin1(sha256)));
            });
    connect(workstation.get(), &Workstation::SigClosed, this, &MonkeyLife::SlotClosed);
    QString problem;
    if (!workstation->Start(&problem)) {
        std::fprintf(stderr, "monkey: %s\n", qPrintable(problem));
        return false;
    }
    Prepare(isFirst);
    return true;
}

// The first life finds an empty server: without apps there is little to do.
void MonkeyLife::Prepare(bool isFirst)
{
    Session* const session = workstation->GetSession();
    auto* samples = new SampleInstaller(this);
    connect(samples, &SampleInstaller::SigFinished, this, [this, samples] {
        samples->deleteLater();
        LetLoose();
    });
    connect(session, &Session::SigSignedIn, samples, [this, isFirst, session, samples] {
        session->disconnect(samples);
        if (isFirst) {
            samples->Start();
        } else {
            samples->deleteLater();
            LetLoose();
        }
    });
    const auto signIn = [this, session] { session->SignIn(order.accounts.first(), order.password, true); };
    connect(session, &Session::SigRefused, samples, [signIn, samples] {
        QTimer::singleShot(pauseBetweenSignIns, samples, signIn); // a busy machine
    });
    signIn();
}

void MonkeyLife::LetLoose()
{
    Say(QStringLiteral("storm"));
    ShortenWaits();
    age.start();
    planted = std::make_unique<PlantedLife>(order.plant, [] { Say(QStringLiteral("planted")); });
    monkey = std::make_unique<Monkey>(order.seed, order.home + QStringLiteral("/files"),
                                      [this](const QString& act) { Note(act); });
    connect(monkey.get(), &Monkey::SigActed, this, [this] {
        watchdog.Beat();
        planted->Acted();
        RpaGlobalDataManager::Instance()->SetSuperAdmin(true); // templates too
        const bool late = order.time.count() > 0 && age.elapsed() > qint64(order.time.count()) * 1000;
        if ((late && monkey->GetCount() >= leastActs) || monkey->GetCount() >= order.acts) {
            CalmDown();
        }
    });
    monkey->Start(order.accounts, order.password);
}

void MonkeyLife::CalmDown()
{
    monkey->Stop();
    Note(QStringLiteral("calm"));
    Say(QStringLiteral("calm"));
    leavingSince.start();
    leaving.start(lookEvery);
}

// Whatever the monkey left open, a user must be able to leave.
void MonkeyLife::Leave()
{
    if (closed)
        return;
    if (leavingSince.elapsed() > std::chrono::milliseconds(order.longestLeaving).count()) {
        const QWidget* stuck = MonkeySight::WindowInUse(0);
        std::fprintf(stderr, "monkey: the workstation cannot be closed, in front is %s\n",
                     qPrintable(MonkeySight::NameOf(stuck)));
        std::abort();
    }
    if (QApplication::activePopupWidget() || QApplication::activeModalWidget())
        DismissWhatIsOpen();
    else
        workstation->GetWindow()->close();
}

void MonkeyLife::DismissWhatIsOpen()
{
    if (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    QWidget* const modal = QApplication::activeModalWidget();
    // Unsaved work is given up where that is asked; everything else is cancelled.
    auto* no = modal->findChild<QAbstractButton*>(QStringLiteral("msgBoxNo"));
    if (no && no->isVisible())
        no->click();
    else if (auto* dialog = qobject_cast<QDialog*>(modal))
        dialog->reject();
    else
        modal->close();
}

void MonkeyLife::SlotClosed()
{
    closed = true;
    code = 0;
    if (monkey) {
        monkey->Stop();
        Say(QStringLiteral("acts %1").arg(monkey->GetCount()));
        const QMap<QString, int>& places = monkey->GetPlaces();
        for (auto place = places.begin(); place != places.end(); ++place)
            Say(QStringLiteral("place %1 %2").arg(place.key()).arg(place.value()));
    }
    Say(QStringLiteral("longest %1").arg(watchdog.GetLongestMs()));
    QApplication::quit();
}

void MonkeyLife::Say(const QString& line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

// Flushed each time: the last ones are wanted when the program dies.
void MonkeyLife::Note(const QString& act)
{
    std::fprintf(acts.get(), "%s\n", qPrintable(act));
    std::fflush(acts.get());
}
