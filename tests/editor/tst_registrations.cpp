// SPDX-License-Identifier: Apache-2.0

// Where the editor and its page for the UI enter themselves, and in which order they leave. The test takes
// the place of the platform's registries, as only ELF lets it.
#include "EditorDriver.h"
#include "TestApp.h"

#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

#include <QtTest>

#include <utility>

namespace
{
QStringList notes;

void NoteNamed(const char* what, const QObject* part)
{
    notes.append(QLatin1String(what) + (part ? part->objectName() : QStringLiteral("nothing")));
}

// Parts of the platform listen to processes too; only the editor's own are of interest.
void NoteOwn(const char* what, IProcessLifeCycle* listener)
{
    const auto* part = dynamic_cast<QObject*>(listener);
    const QString name = part ? QLatin1String(part->metaObject()->className()) : QLatin1String();
    if (name.startsWith(QLatin1String("RpaApp")))
        notes.append(QLatin1String(what) + name);
}

QStringList TakeNotes()
{
    return std::exchange(notes, {});
}
} // namespace

RpaProcessRelatedUIControler* RpaProcessRelatedUIControler::Instance()
{
    static RpaProcessRelatedUIControler instance;
    return &instance;
}

void RpaProcessRelatedUIControler::AddToControl(QPointer<QWidget> widget)
{
    NoteNamed("control ", widget);
}

void RpaProcessRelatedUIControler::RemoveFromControl(QPointer<QWidget> widget)
{
    NoteNamed("no more control ", widget);
}

RpaProcessLifeCycleManager* RpaProcessLifeCycleManager::Instance()
{
    static RpaProcessLifeCycleManager instance;
    return &instance;
}

void RpaProcessLifeCycleManager::AddLifeCycle(IProcessLifeCycle* listener)
{
    NoteOwn("tell ", listener);
}

void RpaProcessLifeCycleManager::RemoveLifeCycle(IProcessLifeCycle* listener)
{
    NoteOwn("no more tell ", listener);
}

RpaGlobalLifeCycle* RpaGlobalLifeCycle::Instance()
{
    static RpaGlobalLifeCycle instance;
    return &instance;
}

void RpaGlobalLifeCycle::AddLogic(IRpaLifeCycle* logic)
{
    NoteNamed("ask ", dynamic_cast<QObject*>(logic));
}

void RpaGlobalLifeCycle::RemoveLogic(IRpaLifeCycle* logic)
{
    NoteNamed("no more ask ", dynamic_cast<QObject*>(logic));
}

class RegistrationsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { TakeNotes(); }

    void entersItsPartsFromTheInside()
    {
        const EditorDriver author;

        QCOMPARE(
            TakeNotes(),
            QStringList({QStringLiteral("control editorWidget"), QStringLiteral("control widgetTabBar"),
                         QStringLiteral("tell RpaAppUIDesignWidget"), QStringLiteral("control version_combo"),
                         QStringLiteral("ask RpaAppEditorWidget")}));
    }

    void leavesFromTheOutside()
    {
        EditorDriver author;
        TakeNotes();

        author.Destroy();

        QCOMPARE(TakeNotes(), QStringList({QStringLiteral("no more ask RpaAppEditorWidget"),
                                           QStringLiteral("no more control version_combo"),
                                           QStringLiteral("no more tell RpaAppUIDesignWidget"),
                                           QStringLiteral("no more control editorWidget"),
                                           QStringLiteral("no more control widgetTabBar")}));
    }
};

RPA_TEST_MAIN(RegistrationsTest)
#include "tst_registrations.moc"
