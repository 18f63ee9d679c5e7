// SPDX-License-Identifier: Apache-2.0

#include "ProblemList_p.h"
#include "ProgramReport_p.h"

#include <WbFoundation/JsonReader.h>

#include <QHash>
#include <QStringList>

namespace
{
constexpr int mostFound = 1000;
constexpr int longestWord = 200;

struct Words
{
    QString rule;
    RpaProblemSeverity severity;
    QString message; // %1, %2: the words of the report
    QString remedy;
};

// By the names of pyflakes; the rest is told as it came.
Words WordsOf(const QString& kind)
{
    static const QHash<QString, Words> known{
        {QStringLiteral("UndefinedName"),
         {QStringLiteral("undefined-name"), RpaProblemSeverity::Warning, QStringLiteral("名称“%1”没有定义"),
          QStringLiteral("请检查拼写，或先给它赋值、导入它")}},
        {QStringLiteral("UndefinedLocal"),
         {QStringLiteral("undefined-name"), RpaProblemSeverity::Warning,
          QStringLiteral("局部变量“%1”在赋值之前使用"), QStringLiteral("请先给它赋值，或声明 global")}},
        {QStringLiteral("UnusedImport"),
         {QStringLiteral("unused-import"), RpaProblemSeverity::Hint, QStringLiteral("导入的“%1”没有被使用"),
          QStringLiteral("请使用它，或删除此导入")}},
        {QStringLiteral("UnusedVariable"),
         {QStringLiteral("unused-local"), RpaProblemSeverity::Hint,
          QStringLiteral("局部变量“%1”赋值后从未使用"), QStringLiteral("请使用它，或删除此赋值")}},
        {QStringLiteral("RedefinedWhileUnused"),
         {QStringLiteral("redefined-name"), RpaProblemSeverity::Warning,
          QStringLiteral("“%1”重复定义，第 %2 行的定义没有被使用"),
          QStringLiteral("请改名，或删除其中一个")}},
        {QStringLiteral("ImportStarUsed"),
         {QStringLiteral("star-import"), RpaProblemSeverity::Hint,
          QStringLiteral("“from %1 import *”使未定义的名称无法检查"), QStringLiteral("请写出要导入的名称")}},
        {QStringLiteral("IsLiteral"),
         {QStringLiteral("program-mistake"), RpaProblemSeverity::Warning, QStringLiteral("用 is 比较了常量"),
          QStringLiteral("请用 == 或 !=")}},
    };
    const Words other{QStringLiteral("program-mistake"), RpaProblemSeverity::Warning,
                      QStringLiteral("程序可能有误：") + kind, QStringLiteral("请检查此行")};
    return known.value(kind, other);
}

// In one pass: what is filled in may look like a place itself.
QString Fill(const QString& text, const QStringList& values)
{
    QString filled;
    for (int i = 0; i < text.size(); ++i) {
        const int place = text.at(i) == QLatin1Char('%') ? text.mid(i + 1, 1).toInt() : 0;
        if (place > 0)
            ++i;
        filled += place > 0 ? values.value(place - 1).left(longestWord) : QString(text.at(i));
    }
    return filled;
}

class ReportReader
{
public:
    ReportReader(const QByteArray& json, const QString& program, const QString& process)
        : reader(json), lines(program.split(QLatin1Char('\n'))), processName(process)
    {
    }

    bool Read()
    {
        bool isReport = false;
        if (!reader.EnterObject())
            return false;
        while (reader.NextMember())
            if (reader.IsKey("syntax"))
                isReport = ReadSyntax();
            else if (reader.IsKey("found"))
                isReport = ReadFound();
        return reader.Finish() && isReport;
    }
    const QVector<RpaProblem>& Get() const { return found.Get(); }

private:
    bool ReadSyntax()
    {
        int line = 0;
        QString text;
        if (!reader.EnterArray() || !reader.NextElement() || !reader.ReadInt(line) || !reader.NextElement() ||
            !reader.ReadString(text) || reader.NextElement())
            return false;
        Add({QStringLiteral("syntax-error"), RpaProblemSeverity::Error, QStringLiteral("语法错误：%1"),
             QStringLiteral("请修改此行")},
            line, {text});
        return true;
    }

    bool ReadFound()
    {
        if (!reader.EnterArray())
            return false;
        bool good = true;
        while (reader.NextElement())
            good = ReadOne() && good;
        return good;
    }

    bool ReadOne()
    {
        int line = 0;
        QString kind;
        QStringList words;
        if (!reader.EnterArray() || !reader.NextElement() || !reader.ReadInt(line) || !reader.NextElement() ||
            !reader.ReadString(kind) || !reader.NextElement() || !reader.EnterArray())
            return false;
        QString word;
        while (reader.NextElement())
            if (reader.ReadString(word))
                words.append(word);
        if (reader.NextElement())
            return false;
        Add(WordsOf(kind.left(longestWord)), line, words);
        return true;
    }

    void Add(const Words& words, int line, const QStringList& values)
    {
        if (line < 1 || line > lines.size() || found.Get().size() == mostFound)
            return; // of another program
        RpaProblem problem;
        problem.rule = words.rule;
        problem.severity = words.severity;
        problem.place.area = RpaProblemArea::Program;
        problem.place.processName = processName;
        problem.place.line = line;
        // What stands in the line says more than its number, which moves.
        problem.subject = values.value(0).left(longestWord) + QLatin1Char(' ') +
                          lines.at(line - 1).trimmed().left(longestWord);
        problem.message = Fill(words.message, values);
        problem.remedy = words.remedy;
        found.Add(problem);
    }

    JsonReader reader;
    const QStringList lines;
    const QString processName;
    ProblemList found;
};
} // namespace

std::optional<QVector<RpaProblem>> ProgramReport::Read(const QByteArray& json, const QString& program,
                                                       const QString& processName)
{
    ReportReader reader(json, program, processName);
    return reader.Read() ? std::optional(reader.Get()) : std::nullopt;
}
