#pragma once

#include <QHash>
#include <QString>

#include <deque>
#include <mutex>

namespace server
{
// At most five tries per account and minute at what could be guessed: passwords, also of accounts that do not
// exist, and invitation codes. Any thread.
class LoginLimit
{
public:
    // 0 when the try may be made (and is counted), else the seconds after which to come back.
    int SecondsToWait(const QString& account, qint64 now);

private:
    void ForgetOld(qint64 now);

    std::mutex mutex;
    QHash<QString, std::deque<qint64>> tries;
};
} // namespace server
