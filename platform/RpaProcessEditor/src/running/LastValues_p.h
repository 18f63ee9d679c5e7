// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QMap>
#include <QObject>
#include <QString>

class RunState;
struct RpaDebugAnswer;

// The values that variables had when a run of the app last stood still, or that the author last gave them, as
// Python that makes them anew.
class LastValues : public QObject
{
    Q_OBJECT

public:
    // The state must outlive this.
    explicit LastValues(const RunState& runState);

    void Forget();
    void Keep(const QMap<QString, QString>& given);

    // Empty when the variable is unknown, or when its value is none that can be written down.
    QString Find(const QString& name) const { return known.value(name); }

    // Whether a value's short text is the whole value: numbers, texts, and lists and dictionaries of them.
    static bool IsWhole(const QString& text);

private:
    void SlotStarted();
    void SlotChanged();
    void Take(const RpaDebugAnswer& answer);

    const RunState& state;
    QMap<QString, QString> known;
    int scopesAsked = 0;
    int valuesAsked = 0;
};
