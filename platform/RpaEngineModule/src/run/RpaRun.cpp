// SPDX-License-Identifier: Apache-2.0

#include "RpaChildProcess_p.h"
#include "RpaRunChannel_p.h"
#include "RpaRun_p.h"
#include "RunFrames_p.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

namespace
{

constexpr int stopGraceMs = 500;
const char* const runtimeFiles[] = {
    "rpa_child.py",    "rpa_api.py",        "error_words.py",  "row_commands.py",  "row_values.py",
    "find_element.js", "pinyin.txt",        "rpa_debug.py",    "debug_values.py",  "debug_code.py",
    "debug_points.py", "debug_stop.py",     "debug_scopes.py", "debug_catches.py", "rpa_spans.py",
    "span_code.py",    "failure_details.py"};

RpaLogLevel LevelOf(const QString& name)
{
    if (name == QLatin1String("debug"))
        return RpaLogLevel::Debug;
    if (name == QLatin1String("warning"))
        return RpaLogLevel::Warning;
    return name == QLatin1String("error") ? RpaLogLevel::Error : RpaLogLevel::Info;
}

} // namespace

class RpaRun::Private
{
public:
    QTemporaryDir folder;
    RpaRunChannel channel;
    RpaChildProcess child;
    QTimer grace;
    RpaProgram program;
    QVector<QVariantMap> unsent; // what came before the job could be handed over
    bool connected = false;
    bool begun = false;
    bool sent = false;
    bool stopping = false;
    bool ended = false;
    bool exited = false;

    void SendJob()
    {
        if (!begun || !connected || sent || stopping)
            return;
        sent = true;
        QVariantMap job{{QStringLiteral("t"), QStringLiteral("run")},
                        {QStringLiteral("source"), program.source},
                        {QStringLiteral("paths"), program.packageFolders}};
        if (!program.debug.isEmpty())
            job.insert(QStringLiteral("debug"), program.debug);
        channel.Send(job);
        for (const QVariantMap& frame : qAsConst(unsent))
            channel.Send(frame);
        unsent.clear();
    }
};

RpaRun::RpaRun(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->grace.setSingleShot(true);
    d->grace.setInterval(stopGraceMs);
    connect(&d->grace, &QTimer::timeout, this, [this] { d->child.Kill(); });
    connect(&d->channel, &RpaRunChannel::SigConnected, this, [this] {
        d->connected = true;
        d->SendJob();
    });
    connect(&d->channel, &RpaRunChannel::SigFrame, this, &RpaRun::TakeFrame);
    connect(&d->channel, &RpaRunChannel::SigClosed, this, [this](const QString& reason) {
        if (!reason.isEmpty()) {
            d->child.Kill();
            // A stop may meet the program in the middle of a frame.
            End({false, d->stopping, 0, d->stopping ? QString() : reason, {}, {}});
        } else if (d->exited) {
            TakeExit(true, {});
        }
    });
    connect(&d->child, &RpaChildProcess::SigExited, this, &RpaRun::TakeExit);
    connect(&d->child, &RpaChildProcess::SigLimitPassed, this, [this](const QString& reason) {
        End({false, false, 0, reason, {}, {}});
    });
}

RpaRun::~RpaRun()
{
    d->ended = true;
}

bool RpaRun::Warm(const QString& interpreter, QString* reason)
{
    if (interpreter.isEmpty()) {
        *reason = QStringLiteral("找不到 Python，请先安装 Python 3");
        return false;
    }
    for (const char* name : runtimeFiles) {
        const QString target = d->folder.filePath(QLatin1String(name));
        if (!QFile::copy(QStringLiteral(":/rpa/runtime/") + QLatin1String(name), target)) {
            *reason = QStringLiteral("无法写入临时文件夹：%1").arg(d->folder.path());
            return false;
        }
    }
    if (!d->channel.Listen(d->folder.path())) {
        *reason = QStringLiteral("无法建立与流程的连接");
        return false;
    }
    // Without -B Python writes compiled files into the folder, which goes while it may still be at it.
    const QStringList arguments{QStringLiteral("-I"),    QStringLiteral("-B"),
                                QStringLiteral("-u"),    QStringLiteral("-X"),
                                QStringLiteral("utf8"),  d->folder.filePath(QStringLiteral("rpa_child.py")),
                                d->channel.GetAddress(), QString::fromLatin1(d->channel.GetToken())};
    return d->child.Start(interpreter, arguments, d->folder.path(), reason);
}

bool RpaRun::IsAlive() const
{
    return d->child.IsRunning() && !d->ended;
}

void RpaRun::Begin(const RpaProgram& program)
{
    d->program = program;
    d->begun = true;
    d->SendJob();
}

void RpaRun::Stop()
{
    d->stopping = true;
    if (!d->sent) {
        d->child.Kill();
        return;
    }
    d->channel.Send({{QStringLiteral("t"), QStringLiteral("stop")}});
    d->grace.start();
}

void RpaRun::SendDebug(const QVariantMap& frame)
{
    if (d->sent)
        d->channel.Send(frame);
    else
        d->unsent.append(frame);
}

void RpaRun::Answer(qint64 callId, const QVariant& value)
{
    d->channel.Send({{QStringLiteral("t"), QStringLiteral("answer")},
                     {QStringLiteral("id"), callId},
                     {QStringLiteral("ok"), true},
                     {QStringLiteral("value"), value}});
}

void RpaRun::Refuse(qint64 callId, const QString& reason)
{
    d->channel.Send({{QStringLiteral("t"), QStringLiteral("answer")},
                     {QStringLiteral("id"), callId},
                     {QStringLiteral("ok"), false},
                     {QStringLiteral("error"), reason}});
}

void RpaRun::TakeFrame(const QVariantMap& frame)
{
    const QString kind = frame.value(QStringLiteral("t")).toString();
    if (kind == QLatin1String("call")) {
        emit SigCall(frame.value(QStringLiteral("id")).toLongLong(),
                     frame.value(QStringLiteral("name")).toString(),
                     frame.value(QStringLiteral("args")).toList());
    } else if (kind == QLatin1String("log")) {
        TakeLog(frame.value(QStringLiteral("lines")).toList());
    } else if (kind == QLatin1String("at")) {
        emit SigAt(frame.value(QStringLiteral("line")).toInt(),
                   RunFrames::Number(frame.value(QStringLiteral("us"))));
    } else if (kind == QLatin1String("spans")) {
        const RpaRunSpans spans = RunFrames::ReadSpans(frame, d->program);
        if (!spans.IsEmpty())
            emit SigSpans(spans);
    } else if (kind == QLatin1String("debug")) {
        emit SigDebug(frame);
    } else if (kind == QLatin1String("end")) {
        End({frame.value(QStringLiteral("ok")).toBool(), d->stopping,
             frame.value(QStringLiteral("line")).toInt(), frame.value(QStringLiteral("error")).toString(),
             frame.value(QStringLiteral("trace")).toString(), RunFrames::ReadFailure(frame, d->program)});
    }
}

void RpaRun::TakeLog(const QVariantList& lines)
{
    for (const QVariant& entry : lines) {
        const QVariantList line = entry.toList();
        const QString level = line.value(0).toString();
        const QString text = line.value(1).toString();
        emit SigLog(LevelOf(level), text, line.value(2).toInt());
        if (level == QLatin1String("point"))
            emit SigLogPoint(text, line.value(2).toInt());
    }
}

void RpaRun::TakeExit(bool crashed, const QString& output)
{
    d->exited = true;
    d->grace.stop();
    if (d->stopping) {
        End({false, true, 0, {}, {}, {}});
    } else if (!d->channel.HasUnread()) {
        const QString what =
            crashed ? QStringLiteral("流程的 Python 意外退出") : QStringLiteral("流程没有正常结束");
        End({false, false, 0, what, output, {}});
    }
}

void RpaRun::End(const RpaRunOutcome& outcome)
{
    if (d->ended || !d->begun)
        return;
    d->ended = true;
    // Nothing of the run may outlive it, whatever its program left behind.
    if (d->child.IsRunning())
        d->child.Kill();
    d->grace.stop();
    emit SigEnded(outcome);
}
