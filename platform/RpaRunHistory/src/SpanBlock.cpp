// SPDX-License-Identifier: Apache-2.0

#include "SpanBlock_p.h"

#include <QDataStream>
#include <QHash>

namespace
{
constexpr quint32 blockFormat = 1;
constexpr quint32 entriesAtMost = 1000 * 1000;

// Writes texts as numbers of a table.
class BlockWriter
{
public:
    BlockWriter() { Prepare(&out); }

    void Text(const QString& text)
    {
        const auto found = numbers.constFind(text);
        const quint32 number = found == numbers.constEnd() ? quint32(texts.size()) : *found;
        if (found == numbers.constEnd()) {
            numbers.insert(text, number);
            texts.append(text);
        }
        out << number;
    }
    void Place(const RpaRunPlace& place)
    {
        Text(place.processName);
        Text(place.statementId);
        out << qint32(place.line);
        Text(place.title);
    }
    template <typename Number>
    void Value(Number number)
    {
        out << number;
    }
    QByteArray Take(int count) const
    {
        QByteArray bytes;
        QDataStream head(&bytes, QIODevice::WriteOnly);
        head.setVersion(QDataStream::Qt_5_9);
        head << blockFormat << quint32(texts.size());
        for (const QString& text : texts)
            head << text;
        head << quint32(count);
        return bytes + body;
    }

private:
    void Prepare(QDataStream* stream) { stream->setVersion(QDataStream::Qt_5_9); }

    QByteArray body;
    QDataStream out{&body, QIODevice::WriteOnly};
    QVector<QString> texts;
    QHash<QString, quint32> numbers;
};

class BlockReader
{
public:
    explicit BlockReader(const QByteArray& bytes) : in(bytes)
    {
        in.setVersion(QDataStream::Qt_5_9);
        if (Value<quint32>() == blockFormat && ReadTexts(Value<quint32>(), bytes.size()))
            count = Value<quint32>();
        if (count > entriesAtMost)
            count = 0;
    }

    int Count() const { return int(count); }
    bool IsWell() const { return in.status() == QDataStream::Ok; }
    QString Text() { return texts.value(int(qMin(Value<quint32>(), entriesAtMost * 8))); }
    RpaRunPlace Place()
    {
        RpaRunPlace place;
        place.processName = Text();
        place.statementId = Text();
        place.line = Value<qint32>();
        place.title = Text();
        return place;
    }
    template <typename Number>
    Number Value()
    {
        Number number = 0;
        in >> number;
        return number;
    }
    RpaSpanKind Kind() { return RpaSpanKind(qMin<int>(Value<quint8>(), int(RpaSpanKind::Program))); }

private:
    // Each has a length at least.
    bool ReadTexts(quint32 expected, int size)
    {
        for (quint32 i = 0; i < qMin(expected, quint32(size / 4)) && IsWell(); ++i) {
            texts.append(QString());
            in >> texts.last();
        }
        return IsWell() && quint32(texts.size()) == expected;
    }

    QDataStream in;
    QVector<QString> texts;
    quint32 count = 0;
};

// Entry by entry; nothing when the bytes end before the last one.
template <typename Entry, typename Read>
QVector<Entry> AllOf(const QByteArray& bytes, const Read& read)
{
    BlockReader reader(bytes);
    QVector<Entry> entries;
    entries.reserve(qMin(reader.Count(), bytes.size() / 16));
    for (int i = 0; i < reader.Count() && reader.IsWell(); ++i)
        entries.append(read(&reader));
    return reader.IsWell() ? entries : QVector<Entry>();
}
} // namespace

QByteArray SpanBlock::Pack(const QVector<RpaRunSpan>& spans)
{
    BlockWriter writer;
    for (const RpaRunSpan& span : spans) {
        writer.Value(quint8(span.kind));
        writer.Value(span.start);
        writer.Value(span.duration);
        writer.Place(span.place);
        for (const QString* text : {&span.call, &span.input, &span.result, &span.error})
            writer.Text(*text);
    }
    return writer.Take(spans.size());
}

QVector<RpaRunSpan> SpanBlock::Unpack(const QByteArray& bytes)
{
    return AllOf<RpaRunSpan>(bytes, [](BlockReader* reader) {
        RpaRunSpan span;
        span.kind = reader->Kind();
        span.start = reader->Value<qint64>();
        span.duration = reader->Value<qint64>();
        span.place = reader->Place();
        for (QString* text : {&span.call, &span.input, &span.result, &span.error})
            *text = reader->Text();
        return span;
    });
}

QByteArray SpanBlock::PackSums(const QVector<RpaRunSpanSum>& sums)
{
    BlockWriter writer;
    for (const RpaRunSpanSum& sum : sums) {
        writer.Value(quint8(sum.kind));
        writer.Place(sum.place);
        for (const qint64 number : {sum.count, sum.total, sum.longest, sum.failures})
            writer.Value(number);
    }
    return writer.Take(sums.size());
}

QVector<RpaRunSpanSum> SpanBlock::UnpackSums(const QByteArray& bytes)
{
    return AllOf<RpaRunSpanSum>(bytes, [](BlockReader* reader) {
        RpaRunSpanSum sum;
        sum.kind = reader->Kind();
        sum.place = reader->Place();
        for (qint64* number : {&sum.count, &sum.total, &sum.longest, &sum.failures})
            *number = reader->Value<qint64>();
        return sum;
    });
}

QByteArray SpanBlock::PackFailure(const RpaRunFailure& failure)
{
    BlockWriter writer;
    for (const RpaRunFrame& frame : failure.stack) {
        writer.Text(frame.functionName);
        writer.Place(frame.place);
    }
    writer.Value(quint32(failure.scopes.size()));
    for (const RpaRunScope& scope : failure.scopes) {
        writer.Text(scope.title);
        writer.Value(quint32(scope.variables.size()));
        for (const RpaRunVariable& variable : scope.variables)
            for (const QString* text : {&variable.name, &variable.type, &variable.text})
                writer.Text(*text);
    }
    return writer.Take(failure.stack.size());
}

RpaRunFailure SpanBlock::UnpackFailure(const QByteArray& bytes)
{
    BlockReader reader(bytes);
    RpaRunFailure failure;
    for (int i = 0; i < reader.Count() && reader.IsWell(); ++i) {
        const QString functionName = reader.Text();
        failure.stack.append({functionName, reader.Place()});
    }
    const auto scopes = reader.Value<quint32>();
    for (quint32 i = 0; i < scopes && reader.IsWell(); ++i) {
        RpaRunScope scope;
        scope.title = reader.Text();
        const auto variables = reader.Value<quint32>();
        for (quint32 j = 0; j < variables && reader.IsWell(); ++j) {
            RpaRunVariable variable;
            for (QString* text : {&variable.name, &variable.type, &variable.text})
                *text = reader.Text();
            scope.variables.append(variable);
        }
        failure.scopes.append(scope);
    }
    return reader.IsWell() ? failure : RpaRunFailure();
}
