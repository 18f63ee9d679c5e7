// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaAppData/RpaSavedState.h>

#include <QSignalSpy>
#include <QtTest>

class SavedStateTest : public QObject
{
    Q_OBJECT

private slots:
    void takesTheMarkOffWhenAllPlacesAreAsSaved();
    void keepsTheMarkAfterAnotherEdit_data();
    void keepsTheMarkAfterAnotherEdit();
    void keepsTheMarkWhenAPlaceGoesWithItsEdits();
    void aSaveMakesEverythingSaved();
    void contentThatIsReplacedIsKnownAnew();
};

void SavedStateTest::takesTheMarkOffWhenAllPlacesAreAsSaved()
{
    qRegisterMetaType<RpaAppData*>();
    RpaAppData app;
    RpaSavedState* const state = RpaSavedState::Of(&app);
    QCOMPARE(RpaSavedState::Of(&app), state);
    QObject pages;
    QObject processes;
    QSignalSpy takenBack(RpaAppDataNotify::Instance(), &RpaAppDataNotify::SigTakenBack);
    QSignalSpy saved(state, &RpaSavedState::SigSaved);
    QSignalSpy edits(&app, &RpaAppData::SigEdited);

    state->Edited(&pages);
    state->Edited(&processes);
    QVERIFY(app.GetModified());
    QCOMPARE(edits.count(), 2);

    state->TakenBack(&pages);
    QVERIFY(app.GetModified());
    state->TakenBack(&processes);
    QVERIFY(!app.GetModified());
    QCOMPARE(takenBack.count(), 1);
    QCOMPARE(takenBack.first().first().value<RpaAppData*>(), &app);
    QCOMPARE(saved.count(), 0);

    state->Edited(&pages);
    QVERIFY(app.GetModified());
}

void SavedStateTest::keepsTheMarkAfterAnotherEdit_data()
{
    QTest::addColumn<QString>("when");

    QTest::newRow("before it was asked for") << QStringLiteral("first");
    QTest::newRow("before the place") << QStringLiteral("before");
    QTest::newRow("after the place") << QStringLiteral("after");
}

void SavedStateTest::keepsTheMarkAfterAnotherEdit()
{
    QFETCH(QString, when);
    RpaAppData app;
    QObject place;

    if (when == QLatin1String("first"))
        app.SetModified(true);
    RpaSavedState* const state = RpaSavedState::Of(&app);
    if (when == QLatin1String("before"))
        app.SetModified(true);
    state->Edited(&place);
    if (when == QLatin1String("after"))
        app.SetModified(true);
    state->TakenBack(&place);

    QVERIFY(app.GetModified());
}

void SavedStateTest::keepsTheMarkWhenAPlaceGoesWithItsEdits()
{
    RpaAppData app;
    RpaSavedState* const state = RpaSavedState::Of(&app);
    QObject other;
    auto place = std::make_unique<QObject>();

    state->Edited(place.get());
    state->Edited(&other);
    place.reset();
    state->TakenBack(&other);

    QVERIFY(app.GetModified());
}

void SavedStateTest::aSaveMakesEverythingSaved()
{
    RpaAppData app;
    RpaSavedState* const state = RpaSavedState::Of(&app);
    QObject place;
    QSignalSpy saved(state, &RpaSavedState::SigSaved);
    app.SetModified(true);
    state->Edited(&place);

    app.SetModified(false);

    QCOMPARE(saved.count(), 1);
    state->Edited(&place);
    state->TakenBack(&place);
    QVERIFY(!app.GetModified());
}

void SavedStateTest::contentThatIsReplacedIsKnownAnew()
{
    RpaAppData app;
    RpaSavedState* const state = RpaSavedState::Of(&app);
    QObject place;
    QSignalSpy saved(state, &RpaSavedState::SigSaved);
    const QByteArray json = app.ToJson();

    QVERIFY(app.Parse(json));
    QCOMPARE(saved.count(), 1);

    state->Edited(&place);
    QVERIFY(app.Parse(json)); // over unsaved work: nothing leads back to what was saved
    QCOMPARE(saved.count(), 1);
    state->TakenBack(&place);
    QVERIFY(app.GetModified());
}

QTEST_GUILESS_MAIN(SavedStateTest)
#include "tst_savedstate.moc"
