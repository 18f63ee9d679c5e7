// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CodeHelper_p.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <QVector>

#include <functional>

// What is asked about a text, at a place of it.
struct CodeQuestion
{
    enum class Kind
    {
        Complete,
        Signatures,
        Explain,
        Define,
        Places,
        CompleteAhead, // as though a dot stood at the place
    };

    Kind kind = Kind::Complete;
    QString text;
    int offset = 0;
};

// The questions of all program editors to the one helper: one is under way, the others wait. Of one asker only the
// newest of a kind waits; what the author waits for goes before what is asked ahead. GUI thread.
class CodeQuestions : public QObject
{
    Q_OBJECT

public:
    // Empty: there is no answer.
    using Answer = std::function<void(const QVariantMap& answer)>;

    // Longer texts take jedi too long.
    static constexpr int mostCharacters = 400 * 1000;

    // The one of the process; it goes with the application.
    static CodeQuestions* Instance();

    explicit CodeQuestions(QObject* parent = nullptr);

    // Starts the helper, so that it is ready when it is asked.
    void Prepare() { helper.Start(); }

    // Whether there can be answers. A helper that is being started may answer.
    bool CanAnswer() const { return helper.MayAnswer(); }
    bool IsMissing() const { return helper.GetState() == CodeHelper::State::Missing; }

    // The answer comes later and once, unless the asker goes or asks the same kind again first.
    void Ask(QObject* asker, const CodeQuestion& question, const Answer& answer);

private:
    struct Asked
    {
        QPointer<QObject> asker;
        CodeQuestion question;
        Answer answer;
        int losses = 0;
    };

    void SendNext();
    void Send();
    void TakeAnswer(const QVariantMap& answer);
    void TakeLoss();
    void GiveUp();
    QByteArray LineOf(const CodeQuestion& question);

    CodeHelper helper;
    QVector<Asked> waiting;
    Asked current;
    int currentId = 0; // 0: none is under way
    int lastId = 0;
    QTimer patience;
    QString knownText; // to the helper
    QStringList knownPaths;
    bool knowsText = false;
};
