// SPDX-License-Identifier: Apache-2.0

#include "CodeQuestions_p.h"
#include "TextPlace_p.h"

#include <RpaEngineModule/RpaEngineModule.h>
#include <WbFoundation/JsonWriter.h>

#include <QCoreApplication>

#include <algorithm>

namespace
{
// Whoever needs longer has lost its way in the text.
constexpr int patienceMs = 60000;
constexpr int mostLosses = 2;

QPointer<CodeQuestions> theQuestions;

void EndTheQuestions()
{
    delete theQuestions.data();
}

QString NameOf(CodeQuestion::Kind kind)
{
    switch (kind) {
    case CodeQuestion::Kind::Signatures:
        return QStringLiteral("signatures");
    case CodeQuestion::Kind::Explain:
        return QStringLiteral("explain");
    case CodeQuestion::Kind::Define:
        return QStringLiteral("define");
    case CodeQuestion::Kind::Places:
        return QStringLiteral("places");
    default:
        return QStringLiteral("complete");
    }
}
} // namespace

CodeQuestions* CodeQuestions::Instance()
{
    if (!theQuestions) {
        theQuestions = new CodeQuestions;
        qAddPostRoutine(&EndTheQuestions); // a process must not outlive what runs its signals
    }
    return theQuestions;
}

CodeQuestions::CodeQuestions(QObject* parent) : QObject(parent)
{
    patience.setSingleShot(true);
    patience.setInterval(patienceMs);
    connect(&patience, &QTimer::timeout, &helper, &CodeHelper::End);
    connect(&helper, &CodeHelper::SigReady, this, &CodeQuestions::SendNext);
    connect(&helper, &CodeHelper::SigMissing, this, &CodeQuestions::GiveUp);
    connect(&helper, &CodeHelper::SigAnswer, this, &CodeQuestions::TakeAnswer);
    connect(&helper, &CodeHelper::SigLost, this, &CodeQuestions::TakeLoss);
}

void CodeQuestions::Ask(QObject* asker, const CodeQuestion& question, const Answer& answer)
{
    helper.Start();
    waiting.erase(std::remove_if(waiting.begin(), waiting.end(),
                                 [&](const Asked& other) {
                                     return !other.asker ||
                                            (other.asker == asker && other.question.kind == question.kind);
                                 }),
                  waiting.end());
    waiting.append({asker, question, answer});
    if (!CanAnswer() || question.text.size() > mostCharacters)
        QTimer::singleShot(0, this, &CodeQuestions::GiveUp);
    else
        SendNext();
}

void CodeQuestions::SendNext()
{
    while (currentId == 0 && helper.GetState() == CodeHelper::State::Ready && !waiting.isEmpty()) {
        const auto next =
            std::min_element(waiting.begin(), waiting.end(), [](const Asked& one, const Asked& other) {
                return one.question.kind < other.question.kind;
            });
        current = *next;
        waiting.erase(next);
        if (current.asker)
            Send();
    }
}

void CodeQuestions::Send()
{
    currentId = ++lastId;
    patience.start();
    helper.Send(LineOf(current.question));
}

QByteArray CodeQuestions::LineOf(const CodeQuestion& question)
{
    const TextPlace place = TextPlace::Of(question.text, question.offset);
    const QStringList paths = RpaEngineModule::Instance()->GetPackageFolders();
    JsonWriter writer;
    writer.BeginObject();
    writer.Member("id", currentId);
    writer.Member("ask", NameOf(question.kind));
    writer.Member("line", place.line);
    writer.Member("column", place.column);
    if (question.kind == CodeQuestion::Kind::CompleteAhead)
        writer.Member("insert", QStringLiteral("."));
    if (!knowsText || paths != knownPaths) {
        writer.Key("paths");
        writer.StringList(paths);
    }
    if (!knowsText || question.text != knownText)
        writer.Member("text", question.text);
    writer.EndObject();
    knowsText = true;
    knownText = question.text;
    knownPaths = paths;
    return writer.Take();
}

void CodeQuestions::TakeAnswer(const QVariantMap& answer)
{
    if (currentId == 0 || answer.value(QStringLiteral("id")).toInt() != currentId)
        return;
    const Asked answered = current;
    currentId = 0;
    patience.stop();
    SendNext(); // it works on while the answer is shown
    if (answered.asker)
        answered.answer(answer);
}

// The next helper is asked again, but not for ever: it may have been the question.
void CodeQuestions::TakeLoss()
{
    knowsText = false;
    patience.stop();
    const bool wasAsked = currentId != 0;
    currentId = 0;
    if (wasAsked && ++current.losses < mostLosses)
        waiting.append(current);
    else if (wasAsked && current.asker)
        current.answer({});
    if (!CanAnswer())
        GiveUp();
}

// What can have no answer is told so.
void CodeQuestions::GiveUp()
{
    QVector<Asked> unanswered;
    if (!CanAnswer())
        unanswered.swap(waiting);
    for (int i = waiting.size() - 1; i >= 0; --i)
        if (waiting.at(i).question.text.size() > mostCharacters)
            unanswered.append(waiting.takeAt(i));
    if (IsMissing() && currentId != 0) {
        currentId = 0;
        unanswered.append(current);
    }
    for (const Asked& asked : qAsConst(unanswered))
        if (asked.asker)
            asked.answer({});
}
