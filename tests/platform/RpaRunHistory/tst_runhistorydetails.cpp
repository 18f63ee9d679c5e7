// SPDX-License-Identifier: Apache-2.0

// What a run did outside and how it failed is kept with it, without its passwords.

#include "RunLogSource.h"
#include "TestFolder.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaRunHistory/RpaRunHistory.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QtTest>

#include <memory>
#include <utility>

namespace
{
const QString secret = QStringLiteral("ge'heim\\74 31");

RpaRunSpan SpanOf(const QString& input, const QString& error = QString())
{
    RpaRunSpan span;
    span.kind = RpaSpanKind::File;
    span.duration = 5;
    span.place = {QStringLiteral("主流程"), QStringLiteral("s1"), 1};
    span.input = input;
    span.error = error;
    return span;
}

RpaRunFailure FailureOf(const QString& text)
{
    return {{{QStringLiteral("f"), {QStringLiteral("主流程"), {}, 1}}},
            {{QStringLiteral("局部变量"), {{QStringLiteral("x"), QStringLiteral("str"), text}}}}};
}
} // namespace

class tst_RunHistoryDetails : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keepsSpansInTheirOrder();
    void keepsSpansOfARunThatGoesOn();
    void keepsHowARunFailed();
    void keepsNoPictureThatIsNone();
    void strikesPasswords_data();
    void strikesPasswords();
    void writesNoPasswordToTheDisk();
    void keepsNothingWhileItIsOff();
    void addsUpWhatTheDiskCannotTakeInTime();

private:
    using Call = std::function<void(IProcessLifeCycle*)>;
    static void Tell(const Call& call) { RpaProcessLifeCycleManager::Instance()->ForEach(call); }
    static void Begin()
    {
        const RpaRunStart start{QStringLiteral("a1"),
                                QStringLiteral("develop"),
                                QStringLiteral("主流程"),
                                {{QStringLiteral("口令"), secret, true}}};
        Tell([&](IProcessLifeCycle* listener) { listener->RunStarted(start); });
    }
    static void Spans(const QVector<RpaRunSpan>& spans)
    {
        Tell([&](IProcessLifeCycle* listener) { listener->RunSpans({spans, {}}); });
    }
    static void Fail(const RpaRunFailure& failure)
    {
        Tell([&](IProcessLifeCycle* listener) { listener->RunFailed(failure); });
        Tell([](IProcessLifeCycle* listener) {
            listener->ProcessFailed(QStringLiteral("主流程"), QStringLiteral("x"), QString());
        });
    }
    static void End()
    {
        Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });
    }
    RpaRunDetails Newest();

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<RunLogSource> source;
    std::unique_ptr<IRpaDebugger> debugger;
    std::unique_ptr<RpaRunHistory> history;
};

void tst_RunHistoryDetails::init()
{
    folder = std::make_unique<TestFolder>();
    source = std::make_unique<RunLogSource>();
    debugger = std::make_unique<IRpaDebugger>();
    history = std::make_unique<RpaRunHistory>();
    history->Start(folder->path());
    history->Follow(source.get(), debugger.get());
}

void tst_RunHistoryDetails::cleanup()
{
    history.reset();
}

RpaRunDetails tst_RunHistoryDetails::Newest()
{
    qint64 id = 0;
    history->List({QStringLiteral("a1"), {}, {}, {}, 1}, this,
                  [&](const QVector<RpaRunRecord>& runs) { id = runs.value(0).id; });
    history->Finish();
    RpaRunDetails newest;
    history->ReadDetails(id, this, [&](const RpaRunDetails& details) { newest = details; });
    history->Finish();
    return newest;
}

void tst_RunHistoryDetails::keepsSpansInTheirOrder()
{
    Spans({SpanOf(QStringLiteral("of no run"))});
    Begin();
    QStringList expected;
    for (int i = 0; i < 2500; ++i) {
        expected << QStringLiteral("/%1").arg(i);
        Spans({SpanOf(expected.last())});
    }
    End();
    Spans({SpanOf(QStringLiteral("too late"))});

    QStringList inputs;
    for (const RpaRunSpan& span : Newest().spans.spans)
        inputs << span.input;
    QCOMPARE(inputs, expected);
}

void tst_RunHistoryDetails::keepsSpansOfARunThatGoesOn()
{
    Begin();
    Spans({SpanOf(QStringLiteral("/a"))});

    QTRY_COMPARE(Newest().spans.spans.size(), 1); // though it does not end
    End();
}

void tst_RunHistoryDetails::keepsHowARunFailed()
{
    QImage picture(2000, 100, QImage::Format_RGB32);
    picture.fill(Qt::red);
    history->SetPicture([picture] { return picture; });
    Begin();
    Fail(FailureOf(QStringLiteral("7")));
    End();

    const RpaRunDetails details = Newest();

    QCOMPARE(details.failure.stack.size(), 1);
    QCOMPARE(details.failure.scopes.value(0).variables.value(0).text, QStringLiteral("7"));
    const QImage kept = QImage::fromData(details.picture, "PNG");
    QCOMPARE(kept.width(), 1280);
    QCOMPARE(kept.pixelColor(5, 5), QColor(Qt::red));
}

void tst_RunHistoryDetails::keepsNoPictureThatIsNone()
{
    history->SetPicture([] { return QImage(); });
    Begin();
    Fail(FailureOf(QStringLiteral("7")));
    End();

    QVERIFY(Newest().picture.isEmpty());
    QVERIFY(!Newest().failure.IsEmpty());
}

void tst_RunHistoryDetails::strikesPasswords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("struck");
    const auto add = [](const char* name, const char* text, const char* struck) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(struck);
    };
    add("as it is", "open ge'heim\\74 31 now", "open •••• now");
    add("as Python shows it", "'a ge\\'heim\\\\74 31 b'", "'a •••• b'");
    add("as Python shows it between other quotes", "\"ge'heim\\\\74 31\"", "\"••••\"");
    add("in an address", "http://x/?a=ge%27heim%5C74%2031&b", "http://x/?a=••••&b");
    add("cut", "'abc ge\\'hei'…", "'abc ••••'…");
    add("cut in the middle of a list", "['abc', 'ge\\'heim\\\\7…", "['abc', '••••…");
    add("cut to less than four characters", "'abc ge'", "'abc ge'");
    add("not at all", "its gehei", "its gehei");
}

void tst_RunHistoryDetails::strikesPasswords()
{
    QFETCH(QString, text);
    QFETCH(QString, struck);
    Begin();
    Spans({SpanOf(text, text)});
    Fail(FailureOf(text));
    End();

    const RpaRunDetails details = Newest();

    QCOMPARE(details.spans.spans.value(0).input, struck);
    QCOMPARE(details.spans.spans.value(0).error, struck);
    QCOMPARE(details.failure.scopes.value(0).variables.value(0).text, struck);
}

void tst_RunHistoryDetails::writesNoPasswordToTheDisk()
{
    Begin();
    Spans({SpanOf(secret, secret)});
    Fail(FailureOf(secret));
    End();
    history.reset();

    const QByteArray wide(reinterpret_cast<const char*>(secret.utf16()), secret.size() * 2);
    QByteArray swapped = wide;
    for (int i = 0; i + 1 < swapped.size(); i += 2)
        std::swap(swapped.data()[i], swapped.data()[i + 1]);
    for (const QString& name : QDir(folder->path()).entryList(QDir::Files)) {
        QFile file(folder->filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY2(!bytes.contains(secret.toUtf8()) && !bytes.contains(wide) && !bytes.contains(swapped),
                 qPrintable(name));
    }
}

void tst_RunHistoryDetails::keepsNothingWhileItIsOff()
{
    bool asked = false;
    history->SetPicture([&asked] {
        asked = true;
        return QImage();
    });
    history->SetKeeping(false);
    Begin();
    Spans({SpanOf(QStringLiteral("/a"))});
    Fail(FailureOf(QStringLiteral("7")));
    End();

    QVERIFY(Newest().spans.IsEmpty());
    QVERIFY(Newest().failure.IsEmpty());
    QVERIFY(!asked);
}

void tst_RunHistoryDetails::addsUpWhatTheDiskCannotTakeInTime()
{
    Begin();
    const QVector<RpaRunSpan> many(1000, SpanOf(QStringLiteral("/a")));
    for (int i = 0; i < 60; ++i) // the event loop does not run meanwhile
        Spans(many);
    End();

    const RpaRunSpans spans = Newest().spans;

    QVERIFY(!spans.sums.isEmpty());
    QVERIFY(spans.spans.size() >= 20000);
    QCOMPARE(spans.spans.size() + spans.sums.first().count, qint64(60000));
}

QTEST_GUILESS_MAIN(tst_RunHistoryDetails)
#include "tst_runhistorydetails.moc"
