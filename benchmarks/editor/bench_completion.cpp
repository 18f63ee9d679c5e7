// SPDX-License-Identifier: Apache-2.0

// Completions in the program editor: a program is written key by key, a key every 100 ms as somebody does who types
// fast, and the time is taken from a key (a dot, or the first letter of a name) until the list is there. Beside it
// jedi alone, in a Python of its own, asked at the same places of the same texts.
//
// Pass: the first <= 300 ms after the page was opened; median <= 50 ms, 95 of 100 <= 150 ms.

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTimer>
#include <QVector>

#include <algorithm>
#include <cstdio>

namespace
{
constexpr int keyMs = 100;
constexpr int patienceMs = 3000;

const char* const lines[] = {
    "import os, json, datetime, re",  "path = os.path.join(os.getcwd(), 'orders.json')",
    "rows = rpa.table_rows()",        "for row in rows:",
    "name = row.get('name').strip()", "rpa.log(name.upper())",
    "now = datetime.datetime.now()",  "text = now.strftime('%Y')",
    "found = re.match('a', text)",    "print(found.group(0))",
    "parts = text.split(',')",        "parts.append('x')",
    "with open(path) as file:",       "data = json.loads(file.read())",
    "total = sum(data.values())",     "rpa.table_append(parts)",
    "answer = rpa.ask('name')",       "rpa.message(answer)",
};

const char plainJedi[] = R"(
import json, sys, time
places = json.load(sys.stdin)
import jedi
times = []
for text, line, column in places:
    begin = time.perf_counter()
    found = [(name.name, name.type) for name in jedi.Script(text).complete(line, column)]
    times.append((time.perf_counter() - begin) * 1000)
print(json.dumps(times))
)";

double Percentile(QVector<double> times, double part)
{
    std::sort(times.begin(), times.end());
    return times.isEmpty() ? 0 : times.at(qMin(times.size() - 1, static_cast<int>(times.size() * part)));
}

void Print(const char* what, const QVector<double>& times)
{
    std::printf("  %-34s first %6.1f  median %6.1f  p95 %6.1f  longest %6.1f ms  (%d)\n", what,
                times.value(0), Percentile(times, 0.5), Percentile(times, 0.95), Percentile(times, 1.0),
                times.size());
}

class Author
{
public:
    Author()
    {
        app->GetAppExtendInfo()->SetAppKind(1);
        app->InitDefault();
        ProcessDataManager* processes = app->GetProcessDataManager();
        processes->Clear();
        processes->AddProcess(QStringLiteral("main"))->SetProgramText(QString());
        page.resize(900, 600);
        page.SetRpaAppData(app);
        page.show();
        page.activateWindow();
        edit = page.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
        edit->setFocus();
    }

    void Rest(int ms)
    {
        QEventLoop loop;
        QTimer::singleShot(ms, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void Press(int key, const QString& text = QString())
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(edit, &press);
    }

    // Until the list is there; -1 without one.
    double TimeOf(QChar c)
    {
        const auto* list = edit->findChild<QWidget*>(QStringLiteral("completionPopup"));
        QElapsedTimer clock;
        clock.start();
        Press(0, QString(c));
        while (!list->isVisible() && clock.elapsed() < patienceMs)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return list->isVisible() ? static_cast<double>(clock.nsecsElapsed()) / 1e6 : -1;
    }

    void NotePlace()
    {
        const QTextCursor cursor = edit->textCursor();
        places.append(QJsonArray{edit->toPlainText(), cursor.blockNumber() + 1, cursor.positionInBlock()});
    }

    void WriteLine(const QString& line)
    {
        QChar before = QLatin1Char(' ');
        for (const QChar c : line) {
            const bool isDot = c == QLatin1Char('.') && !before.isDigit();
            const bool isFirst = c.isLetter() && !before.isLetterOrNumber() && before != QLatin1Char('.') &&
                                 before != QLatin1Char('\'');
            const double time = isDot || isFirst ? TimeOf(c) : -1;
            if (time >= 0) {
                (isDot ? dots : letters).append(time);
                NotePlace();
            }
            if (!isDot && !isFirst)
                Press(0, QString(c));
            before = c;
            Rest(keyMs);
        }
        Press(Qt::Key_Escape);
        Press(Qt::Key_Return, QStringLiteral("\r"));
        Rest(keyMs);
    }

    const RpaAppDataPtr app = RpaAppDataPtr::create();
    ProcessProgramEditorWidget page;
    QPlainTextEdit* edit = nullptr;
    QVector<double> dots;
    QVector<double> letters;
    QJsonArray places;
};

// Until somebody who opens the page and writes at once is offered a name.
void FirstOfAPage(const char* what)
{
    QElapsedTimer clock;
    clock.start();
    Author author;
    author.TimeOf(QLatin1Char('p'));
    std::printf("  %-34s %6.1f ms\n", what, static_cast<double>(clock.nsecsElapsed()) / 1e6);
}

void PlainJedi(const QJsonArray& places)
{
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-I"), QStringLiteral("-c"), QString::fromUtf8(plainJedi)});
    python.write(QJsonDocument(places).toJson());
    python.closeWriteChannel();
    python.waitForFinished(-1);
    QVector<double> times;
    const QJsonArray answer = QJsonDocument::fromJson(python.readAllStandardOutput()).array();
    for (const QJsonValue& time : answer)
        times.append(time.toDouble());
    Print("jedi alone, same places", times);
}
} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    std::printf("completion\n");
    FirstOfAPage("first page: opened until the list");
    FirstOfAPage("next page: opened until the list");
    Author author;
    for (const char* line : lines)
        author.WriteLine(QString::fromLatin1(line));
    Print("behind a dot", author.dots);
    Print("first letter of a name", author.letters);
    Print("all", author.dots + author.letters);
    PlainJedi(author.places);
    return 0;
}
