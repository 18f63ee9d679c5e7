// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QStringList>

#include <functional>
#include <random>

class QFileDialog;
class QWidget;

// Sits at the workstation and does whatever comes to its mind: clicks, drags, keys, texts, wheel, closing.
// Everything goes through the windows, as from a user; what it does is decided by the seed and by what is on
// the screen. Reaches no file outside its own folder and opens nothing outside the workstation.
class Monkey : public QObject
{
    Q_OBJECT

public:
    // folder: where files are chosen and written. tell: hears of every act.
    Monkey(quint32 seed, const QString& folder, std::function<void(const QString&)> tell);

    // account, password: what it signs in with.
    void Start(const QStringList& accounts, const QString& password);
    void Stop() { active = false; }
    int GetCount() const { return count; }
    // How often it acted in each window and page.
    const QMap<QString, int>& GetPlaces() const { return places; }

signals:
    void SigActed();

private:
    void Later();
    void Act();
    void ActIn(QWidget* window);
    void GoAway(QWidget* window);
    bool AnswerFileDialog(QWidget* window);
    bool SignIn();
    bool OpenAnApp();
    bool LeaveSettings();
    void ClickSomething(QWidget* window);
    void Drag(QWidget* window);
    void PressKey(QWidget* window);
    void TypeSomething(QWidget* window);
    void Tell(const char* act, const QWidget* widget, const QString& detail = QString());

    int UpTo(int most);
    bool Sometimes(int percent) { return UpTo(99) < percent; }
    QWidget* PickWidget(QWidget* window);
    QPoint PlaceIn(const QWidget* widget);

    std::mt19937 random;
    const QString folder;
    const std::function<void(const QString&)> tell;
    QStringList accounts;
    QString password;
    int count = 0;
    QElapsedTimer sinceSignIn;
    int actsOutside = 0; // one after the other, without being signed in
    QMap<QString, int> places;
    bool active = false;
};
