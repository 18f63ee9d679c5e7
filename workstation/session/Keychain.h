// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

#include <functional>

// One secret of this user in the secret service of the desktop, which keeps it encrypted with the user's
// password. Calls return at once; what is asked is carried out in its order. GUI thread. One source file with
// a secret service and one without.
class Keychain : public QObject
{
    Q_OBJECT

public:
    enum class Result
    {
        Done,
        NotFound, // the service answers, and keeps no such secret
        Failed,   // there is no service, or it refused, or it did not answer in time
    };
    using Answer = std::function<void(Result result, const QByteArray& secret)>;

    // key: what distinguishes the secret from others of this program.
    explicit Keychain(const QString& key, QObject* parent = nullptr);

    // Whether it is worth asking: false where this program was built without, or no bus leads to a service.
    static bool IsOffered();

    // Each is answered exactly once, never inside the call, and not after this object's end. What the service
    // does when its time is over is not told. Reading gets a minute, as the user may have to unlock the
    // service first; the others get three seconds.
    void Read(const Answer& answer);
    void Write(const QByteArray& secret, const Answer& answer);
    void Remove(const Answer& answer);

private:
    const QString key;
};
