// SPDX-License-Identifier: Apache-2.0

#include "MonkeyRun.h"

#include "NativeProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <csignal>

namespace
{
const QString password = QStringLiteral("a good password");
constexpr int accountCount = 10;
constexpr int lastActsShown = 40;
constexpr int savesToLose = 2; // that many once the monkey is loose

QStringList Accounts()
{
    QStringList pins;
    for (int i = 0; i < accountCount; ++i)
        pins.append(QStringLiteral("monkey-%1").arg(i));
    return pins;
}

bool AddAccount(const QString& dataDir, const QString& pin)
{
    QProcess process;
    process.start(QStringLiteral(SERVER_PROGRAM),
                  {QStringLiteral("--data"), dataDir, QStringLiteral("account"), QStringLiteral("add"), pin,
                   QStringLiteral("--name"), pin, QStringLiteral("--vender"), QStringLiteral("1"),
                   QStringLiteral("--roles"), QStringLiteral("author,user")});
    process.write(password.toUtf8() + '\n');
    process.closeWriteChannel();
    return process.waitForFinished(60000) && process.exitCode() == 0;
}
} // namespace

MonkeyRun::MonkeyRun(quint32 given, int mostActs, std::chrono::seconds mostTime, Plant fault)
    : seed(given), random(given), acts(mostActs), time(mostTime), plant(fault), proxy(given)
{
    connect(&weather, &QTimer::timeout, this, &MonkeyRun::ChangeWeather);
    connect(&life, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &MonkeyRun::SlotLifeEnded);
    connect(&life, &QProcess::readyReadStandardOutput, this, [this] {
        while (life.canReadLine()) {
            Hear(life.readLine().trimmed());
        }
    });
    life.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

MonkeyRun::~MonkeyRun()
{
    life.disconnect(this);
    life.kill();
    life.waitForFinished();
}

bool MonkeyRun::Start()
{
    std::printf("monkey: seed %u\n", seed);
    std::fflush(stdout);
    for (const QString& account : Accounts()) {
        if (!AddAccount(server.DataDir(), account)) {
            std::fprintf(stderr, "monkey: no account\n");
            return false;
        }
    }
    if (!server.Start() || !proxy.Listen()) {
        std::fprintf(stderr, "monkey: no server: %s\n", server.ErrorText());
        return false;
    }
    proxy.SetTarget(server.Port());
    age.start();
    Live();
    return true;
}

void MonkeyRun::Live()
{
    const qint64 left = time.count() > 0 ? qMax<qint64>(1, time.count() - age.elapsed() / 1000) : 0;
    ++lives;
    life.start(QCoreApplication::applicationFilePath(),
               {QStringLiteral("--live"), home.path(),
                QStringLiteral("http://127.0.0.1:%1").arg(proxy.GetPort()),
                QString::number(seed + quint32(lives)), QString::number(acts - done), QString::number(left),
                password, Accounts().join(QLatin1Char(',')), Plants::NameOf(plant)});
}

// A plant must be noticed in good weather, too, and sooner.
void MonkeyRun::Begin()
{
    if (plant == Plant::None)
        weather.start(1000);
    else if (plant == Plant::LostSaves && kept == 0)
        KeepStore();
}

void MonkeyRun::Hear(const QByteArray& line)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.first() == "storm") {
        Begin();
    } else if (words.first() == "calm") {
        weather.stop();
        proxy.SetWeather(StormProxy::Weather::Calm);
    } else if (words.first() == "saved") {
        saves.append({QString::fromLatin1(words.value(1)), words.value(2)});
        if (kept > 0 && int(saves.size()) == kept + savesToLose)
            LoseSaves();
    } else if (words.first() == "planted") {
        isPlanted = true;
    } else if (words.first() == "acts") {
        done += words.value(1).toInt();
    } else if (words.first() == "place") {
        places[QString::fromUtf8(words.value(1))] += words.value(2).toInt();
    } else if (words.first() == "longest") {
        longestMs = qMax(longestMs, words.value(1).toLongLong());
    }
}

// Half of the time the weather is good: a storm without an end would leave little to lose.
void MonkeyRun::ChangeWeather()
{
    const int choice = int(random() % 20);
    if (choice == 19) {
        HitServer();
    } else {
        const auto bad = StormProxy::Weather(1 + random() % (StormProxy::weatherCount - 1));
        proxy.SetWeather(choice < 10 ? StormProxy::Weather::Calm : bad);
    }
    weather.start(300 + int(random() % 2000));
}

// As a power cut, at any moment.
void MonkeyRun::HitServer()
{
    ++kills;
    server.Kill();
    if (!server.Start())
        End(QStringLiteral("the server does not start again: ") + QString::fromUtf8(server.ErrorText()));
}

void MonkeyRun::SlotLifeEnded(int exitCode, QProcess::ExitStatus status)
{
    weather.stop();
    proxy.SetWeather(StormProxy::Weather::Calm);
    if (status != QProcess::NormalExit || exitCode != 0) {
        End(QStringLiteral("workstation %1 ended with %2").arg(lives).arg(exitCode));
        return;
    }
    if (done < acts && (time.count() == 0 || age.elapsed() < qint64(time.count()) * 1000)) {
        Live();
        return;
    }
    server.Stop();
    // A monkey that never got anywhere has tried nothing.
    const bool wasThere = places.value(QStringLiteral("RpaAppUIDesignWidget#pageUIDesign")) > 0;
    End(wasThere ? SavesThatAreMissing() : QStringLiteral("the editor was never reached"));
}

void MonkeyRun::End(const QString& problem)
{
    weather.stop();
    std::printf(
        "monkey: %d acts at %d workstations, %d saves, %d kills of the server, longest pause %lld ms\n", done,
        lives, int(saves.size()), kills, static_cast<long long>(longestMs));
    for (auto place = places.begin(); place != places.end(); ++place)
        std::printf("monkey: %6d in %s\n", place.value(), qPrintable(place.key()));
    if (!problem.isEmpty()) {
        std::printf("monkey: FAILED with seed %u: %s\n%s\n", seed, qPrintable(problem),
                    qPrintable(LastActs()));
    }
    if (plant != Plant::None)
        std::printf("monkey: the planted fault was %s\n", NoticedPlant(problem) ? "noticed" : "NOT NOTICED");
    std::fflush(stdout);
    const bool isRight = plant == Plant::None ? problem.isEmpty() : NoticedPlant(problem);
    code = isRight ? 0 : 1;
    emit SigEnded();
}

bool MonkeyRun::NoticedPlant(const QString& problem) const
{
    const QString end = QStringLiteral("workstation %1 ended with ").arg(lives);
    switch (plant) {
    case Plant::DeadWidget:
        return isPlanted && problem.startsWith(end);
    case Plant::Hang:
    case Plant::StuckWindow:
        return isPlanted && problem == end + QString::number(SIGABRT);
    case Plant::LostSaves:
        return isPlanted && problem.endsWith(QLatin1String("was acknowledged and is not there"));
    case Plant::None:
        break;
    }
    return false;
}

// As a power cut leaves a store that does not write through.
void MonkeyRun::KeepStore()
{
    server.Kill();
    kept = int(saves.size());
    const QDir data(server.DataDir());
    for (const QString& name : data.entryList({QStringLiteral("versions.db*")}))
        QFile::copy(data.filePath(name), home.filePath(name));
    server.Start();
}

void MonkeyRun::LoseSaves()
{
    life.disconnect(this);
    life.kill();
    server.Kill();
    const QDir data(server.DataDir());
    for (const QString& name : data.entryList({QStringLiteral("versions.db*")})) {
        QFile::remove(data.filePath(name));
        QFile::copy(home.filePath(name), data.filePath(name));
    }
    isPlanted = true;
    End(SavesThatAreMissing());
}

QString MonkeyRun::LastActs() const
{
    QFile file(home.filePath(QStringLiteral("acts.txt")));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    return lines.mid(qMax(0, lines.size() - lastActsShown)).join(QLatin1Char('\n'));
}

QString MonkeyRun::SavesThatAreMissing()
{
    QSqlDatabase store = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    store.setDatabaseName(server.DataDir() + QStringLiteral("/versions.db"));
    if (!store.open())
        return QStringLiteral("the store cannot be opened");
    QSqlQuery query(store);
    for (const Save& save : qAsConst(saves)) {
        query.prepare(QStringLiteral("SELECT 1 FROM revision WHERE version_id = ? AND sha256 = ?"));
        query.addBindValue(save.version);
        query.addBindValue(QByteArray::fromHex(save.sha256));
        if (!query.exec() || !query.next()) {
            return QStringLiteral("the save %1 of version %2 was acknowledged and is not there")
                .arg(QString::fromLatin1(save.sha256), save.version);
        }
    }
    return QString();
}
