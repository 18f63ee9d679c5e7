// SPDX-License-Identifier: Apache-2.0

#include "PackageJob_p.h"
#include "PackageRules_p.h"

#include <WbSystem/PythonInterpreter.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{

constexpr int shownLinesAtMost = 500;
// Finding out what is there, making the environment, installing, looking again.
constexpr int plainSteps = 4;

QString ProbeText()
{
    QFile file(QStringLiteral(":/rpa/package/package_probe.py"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// No settings of this user, and UTF-8 whatever the system's own encoding is.
QStringList PythonArguments()
{
    return {QStringLiteral("-I"), QStringLiteral("-X"), QStringLiteral("utf8")};
}

PackageSettings WithPython(PackageSettings settings)
{
    if (settings.python.isEmpty())
        settings.python = PythonInterpreter::Find();
    return settings;
}

QString FailureText(const PackageState& state, const QString& reason)
{
    const QString wanted = PackageRules::Requirement(state);
    if (reason.contains(QLatin1String("No matching distribution")) ||
        reason.contains(QLatin1String("Could not find a version")))
        return QStringLiteral("找不到 %1，请检查名称和版本").arg(wanted);
    return reason.isEmpty() ? QStringLiteral("%1 没有装上").arg(wanted)
                            : QStringLiteral("%1 没有装上：%2").arg(wanted, reason);
}
} // namespace

PackageJob::PackageJob(Kind jobKind, const PackageSettings& given, const QString& appId,
                       const QVector<PackageState>& wanted, QObject* parent)
    : QObject(parent), kind(jobKind), settings(WithPython(given)), environment(given.dataFolder, appId),
      states(wanted)
{
    deadline.setSingleShot(true);
    connect(&deadline, &QTimer::timeout, this, [this] {
        process.reset();
        End(QStringLiteral("安装扩展包超时，已停止"));
    });
}

PackageJob::~PackageJob() = default;

void PackageJob::Start()
{
    deadline.start(settings.timeout);
    steps = kind == Install ? plainSteps : 1;
    Tell(QStringLiteral("正在检查扩展包…"));
    Probe([this] {
        if (kind == Look || Wanted().isEmpty())
            End(QString());
        else
            MakeEnvironment();
    });
}

void PackageJob::Run(const QString& program, const QStringList& arguments, const QByteArray& input,
                     bool isShown, const Next& next)
{
    // The process before it is on the stack of its own signal.
    if (process)
        process.release()->deleteLater();
    process = std::make_unique<PackageProcess>();
    connect(process.get(), &PackageProcess::SigEnded, this, next);
    if (isShown)
        connect(process.get(), &PackageProcess::SigLine, this, &PackageJob::TakeLine);
    process->Start(program, arguments, QDir::rootPath(), input);
}

void PackageJob::Probe(const std::function<void()>& next)
{
    QJsonArray wanted;
    for (const PackageState& state : states)
        wanted.append(QJsonArray{state.name, state.version});
    const QString python = environment.IsReady() ? environment.GetPython() : settings.python;
    Run(python, PythonArguments() + QStringList{QStringLiteral("-c"), ProbeText()},
        QJsonDocument(wanted).toJson(QJsonDocument::Compact), false,
        [this, next, python](bool ok, const QByteArray& output) {
            if (ok && TakeProbe(output))
                next();
            else
                End(python.isEmpty() ? QStringLiteral("找不到 Python，请先安装 Python 3")
                                     : QStringLiteral("无法运行 %1").arg(python));
        });
}

bool PackageJob::TakeProbe(const QByteArray& output)
{
    // Warnings of Python may stand before it.
    const QByteArray lastLine = output.trimmed().split('\n').last();
    const QJsonArray found = QJsonDocument::fromJson(lastLine).array();
    if (found.size() != states.size())
        return false;
    for (int i = 0; i < states.size(); ++i) {
        PackageState& state = states[i];
        state.installedVersion = found.at(i).toArray().at(0).toString();
        const bool fits = found.at(i).toArray().at(1).toBool();
        // Whose name or version cannot be stays failed.
        if (!PackageService::NameProblem(state.name).isEmpty() ||
            !PackageService::VersionProblem(state.version).isEmpty())
            continue;
        if (fits) {
            state.status = PackageState::Installed;
            state.problem.clear();
        } else if (state.status != PackageState::Failed) {
            state.status = PackageState::Missing;
        }
    }
    return true;
}

QVector<int> PackageJob::Wanted() const
{
    QVector<int> wanted;
    for (int i = 0; i < states.size(); ++i) {
        const PackageState& state = states.at(i);
        if (state.status != PackageState::Installed && PackageService::NameProblem(state.name).isEmpty() &&
            PackageService::VersionProblem(state.version).isEmpty())
            wanted << i;
    }
    return wanted;
}

void PackageJob::MakeEnvironment()
{
    Tell(QStringLiteral("正在准备应用的独立环境…"));
    if (environment.IsReady()) {
        InstallTogether();
        return;
    }
    if (!QDir().mkpath(environment.GetFolder())) {
        End(QStringLiteral("无法创建文件夹：%1").arg(environment.GetFolder()));
        return;
    }
    const QStringList arguments{QStringLiteral("-m"),
                                QStringLiteral("venv"),
                                QStringLiteral("--without-pip"),
                                QStringLiteral("--system-site-packages"),
                                QStringLiteral("--clear"),
                                environment.GetFolder()};
    Run(settings.python, PythonArguments() + arguments, {}, true, [this](bool ok, const QByteArray&) {
        if (ok && environment.MarkReady())
            InstallTogether();
        else
            End(QStringLiteral("无法创建应用的独立环境，请检查是否安装了 python3-venv"));
    });
}

QStringList PackageJob::PipArguments() const
{
    QStringList arguments{QStringLiteral("-m"),
                          QStringLiteral("pip"),
                          QStringLiteral("--python"),
                          environment.GetPython(),
                          QStringLiteral("--isolated"),
                          QStringLiteral("--disable-pip-version-check"),
                          QStringLiteral("--no-input"),
                          QStringLiteral("--no-color"),
                          QStringLiteral("install"),
                          QStringLiteral("--only-binary=:all:"),
                          QStringLiteral("--progress-bar=off"),
                          QStringLiteral("--no-warn-script-location")};
    if (settings.indexUrl.isEmpty())
        arguments << QStringLiteral("--no-index");
    else
        arguments << QStringLiteral("--index-url=") + settings.indexUrl;
    for (const QString& folder : settings.wheelFolders) {
        // Anything but an absolute folder would be an address to pip.
        if (QDir::isAbsolutePath(folder) && QDir(folder).exists())
            arguments << QStringLiteral("--find-links=") + folder;
    }
    return arguments << QStringLiteral("--");
}

void PackageJob::Pip(const QStringList& requirements, const Next& next)
{
    lastError.clear();
    Run(settings.python, PythonArguments() + PipArguments() + requirements, {}, true, next);
}

void PackageJob::InstallTogether()
{
    const QVector<int> wanted = Wanted();
    QStringList requirements;
    for (const int index : wanted)
        requirements << PackageRules::Requirement(states.at(index));
    Tell(QStringLiteral("正在安装 %1…").arg(requirements.join(QStringLiteral("、"))));
    Pip(requirements, [this, wanted](bool ok, const QByteArray&) {
        if (!ok && wanted.size() == 1) {
            PackageState& state = states[wanted.first()];
            state.status = PackageState::Failed;
            state.problem = FailureText(state, lastError);
        } else if (!ok) {
            oneByOne = wanted;
            steps += wanted.size();
        }
        InstallNext();
    });
}

void PackageJob::InstallNext()
{
    if (oneByOne.isEmpty()) {
        LookAgain();
        return;
    }
    const int index = oneByOne.takeFirst();
    const QString requirement = PackageRules::Requirement(states.at(index));
    Tell(QStringLiteral("正在单独安装 %1…").arg(requirement));
    Pip({requirement}, [this, index](bool ok, const QByteArray&) {
        if (!ok) {
            states[index].status = PackageState::Failed;
            states[index].problem = FailureText(states.at(index), lastError);
        }
        InstallNext();
    });
}

void PackageJob::LookAgain()
{
    Tell(QStringLiteral("正在检查安装结果…"));
    Probe([this] { End(QString()); });
}

void PackageJob::TakeLine(const QString& line)
{
    if (line.startsWith(QLatin1String("ERROR: ")))
        lastError = line.mid(7);
    if (!line.isEmpty() && shownLines++ < shownLinesAtMost)
        emit SigOutput(line);
}

void PackageJob::End(const QString& problem)
{
    if (ended)
        return;
    ended = true;
    deadline.stop();
    QString text = problem;
    for (PackageState& state : states) {
        if (kind == Install && !problem.isEmpty() && state.status != PackageState::Installed &&
            state.status != PackageState::Failed) {
            state.status = PackageState::Failed;
            state.problem = problem;
        }
        if (text.isEmpty() && state.status == PackageState::Failed)
            text = state.problem;
    }
    emit SigEnded(states, text);
}
