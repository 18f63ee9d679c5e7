// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QVector>

// One notice as the user saw it.
struct SeenToast
{
    QString text;
    int type = -1;

    bool operator==(const SeenToast& other) const { return text == other.text && type == other.type; }
};

// Records every toast that is shown while it lives, in order, by watching for the toast's widget on the
// screen.
class ToastWatcher : public QObject
{
    Q_OBJECT

public:
    ToastWatcher();
    ~ToastWatcher() override;

    const QVector<SeenToast>& GetToasts() const { return toasts; }
    int GetCount() const { return toasts.size(); }
    QStringList GetTexts() const;
    void Clear() { toasts.clear(); }

signals:
    void SigToast(const QString& text, int type);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QVector<SeenToast> toasts;
    QSet<QObject*> seenWidgets; // a toast whose window closes is shown again on another one
    QVector<QPair<QPointer<QObject>, SeenToast>> sources;
};

// How QtTest prints one.
char* toString(const SeenToast& toast);
