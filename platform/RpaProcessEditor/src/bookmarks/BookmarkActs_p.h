// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>

#include <QObject>
#include <QPointer>
#include <QStringList>

class QAction;
class StatementView;

// Bookmarks in the tree: set, taken away, gone to from one to the next through all processes of the app.
class BookmarkActs : public QObject
{
    Q_OBJECT

public:
    explicit BookmarkActs(StatementView* statementView);

    // Null shows none.
    void SetApp(const RpaAppDataPtr& appData);

    const QList<QAction*>& Actions() const { return actions; }
    // After another selection.
    void Update();

signals:
    // A bookmark is gone to.
    void SigPlaceChosen(const QString& processName, const QString& statementId);

private:
    struct Place
    {
        QString processName;
        QString statementId;
    };

    void Add(const QString& name, const QString& text, int key, void (BookmarkActs::*act)());
    void Toggle();
    void GoNext() { Go(1); }
    void GoPrevious() { Go(-1); }
    void Go(int direction);
    // Those in the app, in its order, with the current statement among them; at: where that is.
    QVector<Place> PlacesWithCurrent(int& at) const;

    StatementView* const view;
    QPointer<RpaAppData> app;
    QStringList ids;
    QList<QAction*> actions;
};
