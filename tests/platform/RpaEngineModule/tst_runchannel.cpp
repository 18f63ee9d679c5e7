// SPDX-License-Identifier: Apache-2.0

#include "RpaRunChannel_p.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <WbFoundation/JsonWriter.h>
#include <WbSystem/PythonInterpreter.h>

#include <QDir>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QtEndian>
#include <QtTest>

#include <memory>
#include <vector>

namespace
{

[[maybe_unused]] void ConnectTo(QLocalSocket& socket, const QString& place)
{
    socket.connectToServer(place);
}

[[maybe_unused]] void ConnectTo(QTcpSocket& socket, const QString& place)
{
    socket.connectToHost(QHostAddress::LocalHost, place.toUShort());
}

// Whoever knocks at the channel.
class Knocker
{
public:
    explicit Knocker(const RpaRunChannel& channel)
    {
        ConnectTo(socket, channel.GetAddress().section(QLatin1Char(':'), 1));
    }

    void Say(const QByteArray& bytes)
    {
        socket.waitForConnected();
        socket.write(bytes);
        socket.flush();
    }
    bool IsTurnedAway() const { return socket.state() == RpaRunSocket::UnconnectedState; }
    bool IsConnected() const { return socket.state() == RpaRunSocket::ConnectedState; }
    void Leave() { socket.close(); }

private:
    RpaRunSocket socket;
};

QByteArray FrameOf(const QByteArray& body)
{
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), bytes.data());
    return bytes + body;
}

// A channel that listens, and what it tells.
class Listening
{
public:
    Listening() : isListening(channel.Listen(folder.path())) {}

    QStringList Kinds() const
    {
        QStringList kinds;
        for (const QVariantList& frame : frames)
            kinds << frame.first().toMap().value(QStringLiteral("t")).toString();
        return kinds;
    }

    TestFolder folder;
    RpaRunChannel channel;
    QSignalSpy connected{&channel, &RpaRunChannel::SigConnected};
    QSignalSpy frames{&channel, &RpaRunChannel::SigFrame};
    QSignalSpy closed{&channel, &RpaRunChannel::SigClosed};
    const bool isListening;
};

// The runtime in a real Python, without the engine around it.
class Child
{
public:
    explicit Child(const RpaRunChannel& channel)
    {
        const QStringList files =
            QDir(QStringLiteral(RPA_RUNTIME_FOLDER)).entryList({QStringLiteral("*.py")}, QDir::Files);
        for (const QString& name : files)
            QFile::copy(QStringLiteral(RPA_RUNTIME_FOLDER "/") + name, folder.filePath(name));
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(PythonInterpreter::Find(),
                      {QStringLiteral("-I"), QStringLiteral("-u"), QStringLiteral("-X"),
                       QStringLiteral("utf8"),
                       QDir::toNativeSeparators(folder.filePath(QStringLiteral("rpa_child.py"))),
                       channel.GetAddress(), QString::fromLatin1(channel.GetToken())});
        process.closeWriteChannel();
    }
    ~Child()
    {
        process.kill();
        process.waitForFinished();
    }

    TestFolder folder;
    QProcess process;
};

void BeginJob(RpaRunChannel& channel, const QString& source)
{
    channel.Send({{QStringLiteral("t"), QStringLiteral("run")}, {QStringLiteral("source"), source}});
}

} // namespace

// The wire between the editor and a run, against children and strangers.
class RunChannel : public QObject
{
    Q_OBJECT

private slots:
    void whoShowsTheTokenIsLetIn();
    void aTokenMayComeInPieces();
    void aStrangerIsTurnedAway_data();
    void aStrangerIsTurnedAway();
    void whoSaysNothingIsTurnedAwayInTime();
    void manySilentStrangersDoNotKeepTheChildOut();
    void nobodyIsLetInAfterTheChild();
    void everyRunHasATokenOfItsOwn();
    void framesOfAChildThatLeftAreTold();
    void answeringAChildThatLeftIsQuiet();
    void aBrokenFrameEndsTheConnection_data();
    void aBrokenFrameEndsTheConnection();
    void aPythonChildRunsItsJob();
    void aPythonChildStopsWhenAsked_data();
    void aPythonChildStopsWhenAsked();
    void aPythonChildEndsWhenItsEditorIsGone();
};

void RunChannel::whoShowsTheTokenIsLetIn()
{
    Listening editor;
    QVERIFY(editor.isListening);
    Knocker child(editor.channel);

    child.Say(editor.channel.GetToken() + FrameOf(R"({"t":"at","line":7})"));

    QTRY_COMPARE(editor.frames.size(), 1);
    QCOMPARE(editor.connected.size(), 1);
    QCOMPARE(editor.frames.first().first().toMap().value(QStringLiteral("line")).toInt(), 7);
}

void RunChannel::aTokenMayComeInPieces()
{
    Listening editor;
    Knocker child(editor.channel);

    child.Say(editor.channel.GetToken().left(10));
    child.Say(editor.channel.GetToken().mid(10) + FrameOf(R"({"t":"at"})").left(6));
    QTRY_COMPARE(editor.connected.size(), 1);
    child.Say(FrameOf(R"({"t":"at"})").mid(6));

    QTRY_COMPARE(editor.Kinds(), QStringList{QStringLiteral("at")});
}

void RunChannel::aStrangerIsTurnedAway_data()
{
    QTest::addColumn<QByteArray>("words");

    QTest::newRow("a wrong token") << QByteArray(64, 'a');
    QTest::newRow("a frame") << FrameOf(R"({"t":"hello","token":"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"})");
    QTest::newRow("a request of a browser")
        << QByteArray("GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUser-Agent: someone\r\nAccept: */*\r\n\r\n");
    QTest::newRow("a flood") << QByteArray(4 * 1024 * 1024, '\0');
}

void RunChannel::aStrangerIsTurnedAway()
{
    QFETCH(QByteArray, words);
    Listening editor;
    Knocker stranger(editor.channel);

    stranger.Say(words);

    QTRY_VERIFY(stranger.IsTurnedAway());
    QCOMPARE(editor.connected.size(), 0);
    QCOMPARE(editor.frames.size(), 0);
    Knocker child(editor.channel);
    child.Say(editor.channel.GetToken());
    QTRY_COMPARE(editor.connected.size(), 1);
}

void RunChannel::whoSaysNothingIsTurnedAwayInTime()
{
    Listening editor;
    Knocker silent(editor.channel);
    Knocker slow(editor.channel);
    slow.Say(editor.channel.GetToken().left(63));

    QTRY_VERIFY_WITH_TIMEOUT(silent.IsTurnedAway() && slow.IsTurnedAway(),
                             RpaRunHandshake::patienceMs + 2000);

    QCOMPARE(editor.connected.size(), 0);
}

void RunChannel::manySilentStrangersDoNotKeepTheChildOut()
{
    Listening editor;
    std::vector<std::unique_ptr<Knocker>> strangers;
    strangers.reserve(3 * RpaRunHandshake::placesAtMost);
    for (int i = 0; i < 3 * RpaRunHandshake::placesAtMost; ++i)
        strangers.push_back(std::make_unique<Knocker>(editor.channel));
    QTRY_VERIFY(strangers.front()->IsTurnedAway());
    Knocker child(editor.channel);

    child.Say(editor.channel.GetToken());

    QTRY_COMPARE(editor.connected.size(), 1);
    for (const auto& stranger : strangers)
        QTRY_VERIFY(stranger->IsTurnedAway());
    QVERIFY(child.IsConnected());
}

void RunChannel::nobodyIsLetInAfterTheChild()
{
    Listening editor;
    Knocker child(editor.channel);
    Knocker second(editor.channel);
    second.Say({});
    child.Say(editor.channel.GetToken());
    QTRY_COMPARE(editor.connected.size(), 1);

    Knocker third(editor.channel);
    second.Say(editor.channel.GetToken() + FrameOf(R"({"t":"end"})"));

    QTRY_VERIFY(second.IsTurnedAway());
    QTRY_VERIFY(third.IsTurnedAway());
    child.Say(FrameOf(R"({"t":"at"})"));
    QTRY_COMPARE(editor.Kinds(), QStringList{QStringLiteral("at")});
}

void RunChannel::everyRunHasATokenOfItsOwn()
{
    const Listening first;
    const Listening second;

    QCOMPARE(first.channel.GetToken().size(), 64);
    QVERIFY(first.channel.GetToken() != second.channel.GetToken());
    QVERIFY(first.channel.GetAddress() != second.channel.GetAddress());
}

void RunChannel::framesOfAChildThatLeftAreTold()
{
    Listening editor;
    Knocker child(editor.channel);

    child.Say(editor.channel.GetToken() + FrameOf(R"({"t":"at"})") + FrameOf(R"({"t":"end"})"));
    child.Leave();

    QTRY_COMPARE(editor.closed.size(), 1);
    QCOMPARE(editor.Kinds(), (QStringList{QStringLiteral("at"), QStringLiteral("end")}));
    QCOMPARE(editor.closed.first().first().toString(), QString());
}

// Warnings fail this test.
void RunChannel::answeringAChildThatLeftIsQuiet()
{
    Listening editor;
    Knocker child(editor.channel);
    connect(&editor.channel, &RpaRunChannel::SigConnected, &editor.channel, [&editor] {
        // The first may still be taken by the system, the others find out.
        for (int frame = 0; frame < 20; ++frame)
            editor.channel.Send({{QStringLiteral("t"), QStringLiteral("run")},
                                 {QStringLiteral("source"), QString(100000, QLatin1Char('x'))}});
    });

    child.Say(editor.channel.GetToken());
    child.Leave();

    QTRY_COMPARE(editor.connected.size(), 1);
    QTRY_COMPARE(editor.closed.size(), 1);
    QCOMPARE(editor.closed.first().first().toString(), QString());
}

void RunChannel::aBrokenFrameEndsTheConnection_data()
{
    QTest::addColumn<QByteArray>("frame");

    QTest::newRow("longer than allowed") << QByteArray("\x7f\xff\xff\xff{");
    QTest::newRow("not JSON") << FrameOf("hello");
    QTest::newRow("no object") << FrameOf("[1]");
    QTest::newRow("empty") << FrameOf({});
}

void RunChannel::aBrokenFrameEndsTheConnection()
{
    QFETCH(QByteArray, frame);
    Listening editor;
    Knocker child(editor.channel);

    child.Say(editor.channel.GetToken() + frame + FrameOf(R"({"t":"end"})"));

    QTRY_COMPARE(editor.closed.size(), 1);
    QVERIFY(!editor.closed.first().first().toString().isEmpty());
    QCOMPARE(editor.frames.size(), 0);
    QTRY_VERIFY(child.IsTurnedAway());
}

void RunChannel::aPythonChildRunsItsJob()
{
    Listening editor;
    Child child(editor.channel);
    QTRY_VERIFY2_WITH_TIMEOUT(editor.connected.size() == 1, child.process.readAll().constData(), 20000);

    BeginJob(editor.channel, QStringLiteral("print('你好')\nrpa.set_param('a', 1)\n"));

    QTRY_VERIFY(editor.Kinds().contains(QStringLiteral("call")));
    const QVariantMap log = editor.frames.at(editor.Kinds().indexOf(QStringLiteral("log"))).first().toMap();
    QCOMPARE(log.value(QStringLiteral("lines")).toList().first().toList().value(1).toString(),
             QStringLiteral("你好"));
    editor.channel.Send({{QStringLiteral("t"), QStringLiteral("answer")},
                         {QStringLiteral("id"), 1},
                         {QStringLiteral("ok"), true}});
    QTRY_VERIFY(editor.Kinds().contains(QStringLiteral("end")));
    QVERIFY(editor.frames.last().first().toMap().value(QStringLiteral("ok")).toBool());
    QTRY_COMPARE(editor.closed.size(), 1);
}

void RunChannel::aPythonChildStopsWhenAsked_data()
{
    QTest::addColumn<QString>("program");

    QTest::newRow("it computes") << QStringLiteral("print('up')\nwhile True: pass\n");
    QTest::newRow("it sleeps") << QStringLiteral("import time\nprint('up')\ntime.sleep(600)\n");
    QTest::newRow("it waits for an answer") << QStringLiteral("print('up')\nrpa.confirm('?')\n");
}

void RunChannel::aPythonChildStopsWhenAsked()
{
    QFETCH(QString, program);
    Listening editor;
    Child child(editor.channel);
    QTRY_VERIFY2_WITH_TIMEOUT(editor.connected.size() == 1, child.process.readAll().constData(), 20000);
    BeginJob(editor.channel, program);
    QTRY_VERIFY(editor.Kinds().contains(QStringLiteral("log")));

    editor.channel.Send({{QStringLiteral("t"), QStringLiteral("stop")}});

    QTRY_VERIFY(editor.Kinds().contains(QStringLiteral("end")));
    QVERIFY(editor.frames.last().first().toMap().value(QStringLiteral("stopped")).toBool());
}

void RunChannel::aPythonChildEndsWhenItsEditorIsGone()
{
    auto editor = std::make_unique<Listening>();
    Child child(editor->channel);
    QTRY_VERIFY2_WITH_TIMEOUT(editor->connected.size() == 1, child.process.readAll().constData(), 20000);
    BeginJob(editor->channel, QStringLiteral("print('up')\nwhile True: pass\n"));
    QTRY_VERIFY(editor->Kinds().contains(QStringLiteral("log")));

    editor.reset();

    QTRY_COMPARE(child.process.state(), QProcess::NotRunning);
    QCOMPARE(child.process.exitCode(), 0);
}

RPA_TEST_MAIN(RunChannel)
#include "tst_runchannel.moc"
