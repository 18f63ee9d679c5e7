// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Keychain.h"
#include "SecretStore.h"

#include <QUrl>

#include <functional>

// Keeps the sign-in that outlives the workstation: in the desktop's secret service where one answers, else in
// the user's file. The file is what counts: while it lies there, what the secret service holds is older. GUI
// thread.
class SignInKeeper : public QObject
{
    Q_OBJECT

public:
    explicit SignInKeeper(const QString& file, QObject* parent = nullptr);
    // What the secret service has not taken yet goes into the file.
    ~SignInKeeper() override;

    // Replaces what was kept. Told once, perhaps inside the call, whether it is kept now; not told when
    // Keep() or Forget() is called before.
    void Keep(const QUrl& server, const QByteArray& token, const std::function<void(bool isKept)>& told);

    // The token for this server, perhaps inside the call; empty when none is kept for it. Not told when Keep()
    // or Forget() is called before. A sign-in that lies in the file moves on to the secret service.
    void GetToken(const QUrl& server, const std::function<void(const QByteArray& token)>& told);

    // In both places. While the secret service does not answer, the file says that nothing is kept.
    void Forget();

private:
    void Move(const QByteArray& text);
    void Clear();

    SecretStore store;
    Keychain keychain;
    QByteArray untaken; // by the secret service: for the file, if there is no time left
    int change = 0;     // number of the last Keep() or Forget(); what was asked before it is out of date
};
