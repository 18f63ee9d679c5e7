// SPDX-License-Identifier: Apache-2.0

#include "SignInKeeper.h"

#include "KeptSignIn.h"

#include <QFileInfo>

#include <utility>

namespace
{
// In the file: whatever the secret service holds is not to be used any more.
const QByteArray nothing = QByteArrayLiteral("{}");
} // namespace

SignInKeeper::SignInKeeper(const QString& file, QObject* parent)
    : QObject(parent), store(file), keychain(QFileInfo(file).absoluteFilePath())
{
}

SignInKeeper::~SignInKeeper()
{
    if (!untaken.isEmpty())
        store.Write(untaken);
}

void SignInKeeper::Keep(const QUrl& server, const QByteArray& token,
                        const std::function<void(bool isKept)>& told)
{
    const QByteArray text = KeptSignIn::Written(server, token);
    if (text.isEmpty() || !Keychain::IsOffered()) {
        Forget();
        told(!text.isEmpty() && store.Write(text));
        return;
    }
    const int asked = ++change;
    store.Write(nothing); // of what the secret service holds until it has the new one
    untaken = text;
    keychain.Write(text, [this, told, asked](Keychain::Result result, const QByteArray&) {
        if (asked != change)
            return;
        const QByteArray kept = std::exchange(untaken, QByteArray());
        const bool isTaken = result == Keychain::Result::Done;
        if (isTaken)
            store.Remove();
        told(isTaken || store.Write(kept));
    });
}

void SignInKeeper::GetToken(const QUrl& server, const std::function<void(const QByteArray& token)>& told)
{
    const QByteArray text = store.Read();
    if (!text.isEmpty() || !Keychain::IsOffered()) {
        const int asked = change;
        told(KeptSignIn::TokenIn(text, server));
        if (asked == change)
            text == nothing ? Clear() : Move(text);
        return;
    }
    keychain.Read([this, server, told, asked = change](Keychain::Result, const QByteArray& secret) {
        if (asked == change)
            told(KeptSignIn::TokenIn(secret, server));
    });
}

void SignInKeeper::Forget()
{
    ++change;
    untaken.clear();
    if (!Keychain::IsOffered()) {
        store.Remove();
        return;
    }
    store.Write(nothing);
    Clear();
}

void SignInKeeper::Move(const QByteArray& text)
{
    if (text.isEmpty() || !Keychain::IsOffered())
        return;
    keychain.Write(text, [this, asked = change](Keychain::Result result, const QByteArray&) {
        if (asked == change && result == Keychain::Result::Done)
            store.Remove();
    });
}

void SignInKeeper::Clear()
{
    keychain.Remove([this, asked = change](Keychain::Result result, const QByteArray&) {
        if (asked == change && result != Keychain::Result::Failed)
            store.Remove();
    });
}
