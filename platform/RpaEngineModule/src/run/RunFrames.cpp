// SPDX-License-Identifier: Apache-2.0

#include "RunFrames_p.h"

#include <QHash>

#include <limits>

namespace
{

constexpr int entriesOfAFrame = 1000;
constexpr int longestCall = 64;
constexpr int longestValue = 200;
constexpr int longestLabel = 300;
constexpr int framesOfAFailure = 50;
constexpr int scopesOfAFailure = 8;
constexpr int variablesOfAScope = 200;
constexpr qint64 longestTime = qint64(400) * 24 * 3600 * 1000000; // of a run

QString TextAt(const QVariantList& entries, int place, int length)
{
    const QVariant value = entries.value(place);
    return value.userType() == QMetaType::QString ? value.toString().left(length) : QString();
}

qint64 TimeAt(const QVariantList& entries, int place)
{
    return qMin(RunFrames::Number(entries.value(place)), longestTime);
}

RpaRunPlace PlaceAt(const QVariantList& entries, int place, const RpaProgram& program)
{
    const qint64 line = RunFrames::Number(entries.value(place));
    return program.GetOrigin(int(qMin<qint64>(line, std::numeric_limits<int>::max()))).ToPlace();
}

// Position for a kind that is none.
RpaSpanKind KindAt(const QVariantList& entries, int place)
{
    static const QHash<QString, RpaSpanKind> kinds{{QStringLiteral("file"), RpaSpanKind::File},
                                                   {QStringLiteral("excel"), RpaSpanKind::Excel},
                                                   {QStringLiteral("http"), RpaSpanKind::Http},
                                                   {QStringLiteral("browser"), RpaSpanKind::Browser},
                                                   {QStringLiteral("dialog"), RpaSpanKind::Dialog},
                                                   {QStringLiteral("mail"), RpaSpanKind::Mail},
                                                   {QStringLiteral("database"), RpaSpanKind::Database},
                                                   {QStringLiteral("program"), RpaSpanKind::Program}};
    return kinds.value(TextAt(entries, place, longestCall), RpaSpanKind::Position);
}

RpaRunSpan ReadSpan(const QVariantList& entries, const RpaProgram& program)
{
    RpaRunSpan span;
    span.start = TimeAt(entries, 0);
    span.duration = TimeAt(entries, 1);
    span.place = PlaceAt(entries, 2, program);
    span.kind = KindAt(entries, 3);
    span.call = TextAt(entries, 4, longestCall);
    span.input = TextAt(entries, 5, longestValue);
    span.result = TextAt(entries, 6, longestValue);
    span.error = TextAt(entries, 7, longestValue);
    return span;
}

RpaRunSpanSum ReadSum(const QVariantList& entries, const RpaProgram& program)
{
    RpaRunSpanSum sum;
    sum.place = PlaceAt(entries, 0, program);
    sum.kind = KindAt(entries, 1);
    sum.count = TimeAt(entries, 2);
    sum.total = TimeAt(entries, 3);
    sum.longest = TimeAt(entries, 4);
    sum.failures = qMin(TimeAt(entries, 5), sum.count);
    return sum;
}

RpaRunScope ReadScope(const QVariantList& entries)
{
    RpaRunScope scope;
    scope.title = TextAt(entries, 0, longestLabel);
    for (const QVariant& entry : entries.value(1).toList().mid(0, variablesOfAScope)) {
        const QVariantList parts = entry.toList();
        scope.variables.append(
            {TextAt(parts, 0, longestLabel), TextAt(parts, 1, longestLabel), TextAt(parts, 2, longestLabel)});
    }
    return scope;
}

} // namespace

namespace RunFrames
{

qint64 Number(const QVariant& value)
{
    const int type = value.userType();
    if (type == QMetaType::Double)
        return value.toDouble() >= 0 && value.toDouble() < 9e15 ? qint64(value.toDouble()) : 0;
    if (type != QMetaType::LongLong && type != QMetaType::Int)
        return 0;
    return qMax<qint64>(0, value.toLongLong());
}

RpaRunSpans ReadSpans(const QVariantMap& frame, const RpaProgram& program)
{
    RpaRunSpans read;
    for (const QVariant& entry : frame.value(QStringLiteral("spans")).toList().mid(0, entriesOfAFrame)) {
        const RpaRunSpan span = ReadSpan(entry.toList(), program);
        if (span.kind != RpaSpanKind::Position && span.place.line > 0)
            read.spans.append(span);
    }
    for (const QVariant& entry : frame.value(QStringLiteral("sums")).toList().mid(0, entriesOfAFrame)) {
        const RpaRunSpanSum sum = ReadSum(entry.toList(), program);
        if (sum.kind != RpaSpanKind::Position && sum.place.line > 0 && sum.count > 0)
            read.sums.append(sum);
    }
    return read;
}

RpaRunFailure ReadFailure(const QVariantMap& frame, const RpaProgram& program)
{
    RpaRunFailure failure;
    for (const QVariant& entry : frame.value(QStringLiteral("stack")).toList().mid(0, framesOfAFailure)) {
        const QVariantList parts = entry.toList();
        const RpaRunPlace place = PlaceAt(parts, 1, program);
        // What calls the first process is no statement.
        if (place.line > 0)
            failure.stack.append({TextAt(parts, 0, longestLabel), place});
    }
    for (const QVariant& entry : frame.value(QStringLiteral("scopes")).toList().mid(0, scopesOfAFailure))
        failure.scopes.append(ReadScope(entry.toList()));
    return failure;
}

} // namespace RunFrames
